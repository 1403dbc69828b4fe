#include "Tallyglass/Screens/Exclusions/ExclusionsViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Desktop/FilePanels.h"

#include <utility>
#include <vector>

namespace tallyglass {

void ExclusionsViewModel::makeModel() {
    m_exclusions = std::make_unique<ExclusionsModel>(model()->environment());
    for (const auto topic : {&ExclusionsModel::statusesChanged, &ExclusionsModel::skipPathsChanged,
                             &ExclusionsModel::errorChanged, &ExclusionsModel::busyChanged})
        connect(m_exclusions.get(), topic, this, &ExclusionsViewModel::scheduleUpdate);
    m_exclusions->refresh();
}

void ExclusionsViewModel::appear() {
    if (m_exclusions)
        m_exclusions->refresh();
}

void ExclusionsViewModel::update() {
    if (!m_exclusions)
        makeModel();
    std::vector<ExclusionRowContent> rows;
    rows.reserve(m_exclusions->statuses().size());
    for (const ExclusionStatus& status : m_exclusions->statuses())
        rows.push_back(exclusionRowContent(status, m_exclusions->pendingExclusion(status.path)));

    m_isBusy = m_exclusions->isBusy();
    m_isEmpty = m_exclusions->isLoaded() && rows.empty();
    m_error = exclusionFailure(*m_exclusions);
    m_skipPaths = toQStringList(m_exclusions->skipPaths());
    m_rows.setRows(std::move(rows));
}

void ExclusionsViewModel::addItems() {
    showPanel(FilePanel::Kind::openFiles);
}

void ExclusionsViewModel::addFolder() {
    showPanel(FilePanel::Kind::openFolder);
}

void ExclusionsViewModel::showPanel(FilePanel::Kind kind) {
    if (!m_exclusions)
        return;
    context()->panels()->show({.kind = kind, .message = tr("Choose files or folders to manage")}, this,
                              [this](const FilePanels::Choice& chosen) {
                                  if (!chosen.empty())
                                      m_exclusions->addPaths(chosen);
                              });
}

void ExclusionsViewModel::drop(const QList<QUrl>& urls) {
    if (const auto items = FilePanels::localFiles(urls); m_exclusions && !items.empty())
        m_exclusions->addPaths(items);
}

void ExclusionsViewModel::setExcluded(bool excluded, const QString& path) {
    if (m_exclusions)
        m_exclusions->setExcluded(excluded, path.toStdString());
}

void ExclusionsViewModel::toggle(const QString& path) {
    const ExclusionRowContent item = m_rows.itemAt(path);
    if (item.canToggle && !m_exclusions->isBusy())
        setExcluded(!item.isExcluded, path);
}

void ExclusionsViewModel::stopTracking(const QString& path) {
    if (m_exclusions)
        m_exclusions->stopTracking(path.toStdString());
}

void ExclusionsViewModel::copy(const QString& path) {
    if (context())
        context()->clipboard()->setText(path);
}

void ExclusionsViewModel::reveal(const QString& path) {
    if (const ExclusionRowContent item = m_rows.itemAt(path); item.exists)
        context()->workspace()->reveal(item.key);
}

} // namespace tallyglass
