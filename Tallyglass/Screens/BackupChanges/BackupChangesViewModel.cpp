#include "Tallyglass/Screens/BackupChanges/BackupChangesViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"

namespace tallyglass {

BackupChangesViewModel::BackupChangesViewModel(QObject* parent) : ViewModel(parent) {}
BackupChangesViewModel::~BackupChangesViewModel() = default;

void BackupChangesViewModel::setTarget(const QVariant& target) {
    if (!m_hasLoaded && target.canConvert<TimelinePoint>()) {
        m_target = target.value<TimelinePoint>();
        scheduleUpdate();
    }
}

QVariant BackupChangesViewModel::target() const {
    return m_target ? QVariant::fromValue(*m_target) : QVariant();
}

Date BackupChangesViewModel::targetDate() const {
    if (m_target)
        return m_target->date;
    const TMDestination* destination = model()->selectedDestination();
    return destination && !destination->snapshotDates.empty() ? destination->snapshotDates.back()
                                                              : model()->now();
}

void BackupChangesViewModel::update() {
    if (m_isClosed)
        return;
    if (!m_changes)
        makeChanges();
    if (!m_hasLoaded && model()->fdaStatus() == FDAStatus::granted)
        load();
    m_content = backupChangesContent(*model(), *m_changes, targetDate());
}

void BackupChangesViewModel::makeChanges() {
    m_changes = std::make_unique<BackupChangesModel>(model()->environment());
    for (const auto topic : {&BackupChangesModel::backupsChanged, &BackupChangesModel::progressChanged,
                             &BackupChangesModel::elapsedChanged, &BackupChangesModel::resultChanged,
                             &BackupChangesModel::errorChanged})
        connect(m_changes.get(), topic, this, &BackupChangesViewModel::scheduleUpdate);
    connect(m_changes.get(), &BackupChangesModel::rowsChanged, this, [this] {
        m_rows.setRows(m_changes->visibleRows(), m_changes->tree());
        scheduleUpdate();
    });
}

void BackupChangesViewModel::load() {
    m_hasLoaded = true;
    m_target = TimelinePoint{targetDate()};
    m_changes->load(m_target->date, depth);
}

QString BackupChangesViewModel::searchText() const {
    return m_changes ? toQString(m_changes->searchText()) : QString();
}

void BackupChangesViewModel::setSearchText(const QString& text) {
    if (!m_changes || text == searchText())
        return;
    m_changes->setSearchText(text.toStdString());
    emit filterChanged();
}

bool BackupChangesViewModel::showContentChangesOnly() const {
    return !m_changes || m_changes->showContentChangesOnly();
}

void BackupChangesViewModel::setShowContentChangesOnly(bool contentOnly) {
    if (!m_changes || contentOnly == showContentChangesOnly())
        return;
    m_changes->setShowContentChangesOnly(contentOnly);
    emit filterChanged();
}

const DisplayRow* BackupChangesViewModel::rowAt(int row) const {
    return row >= 0 && row < m_rows.rowCount() ? &m_changes->visibleRows()[static_cast<std::size_t>(row)]
                                               : nullptr;
}

void BackupChangesViewModel::expand(const std::string& path) {
    const ChangeRecord* folder = m_changes ? m_changes->tree().find(path) : nullptr;
    if (folder && !m_changes->tree().isExpanded(path))
        m_changes->toggleExpand(*folder);
}

void BackupChangesViewModel::toggle(int row) {
    const DisplayRow* shown = rowAt(row);
    if (shown && shown->isExpandable) // the hits of a search aren't
        m_changes->toggleExpand(*shown->change);
}

int BackupChangesViewModel::stepIn(int row) {
    const DisplayRow* shown = rowAt(row);
    if (!shown || !shown->isExpandable)
        return row;
    if (shown->isExpanded)
        return m_rows.firstChildOf(row).value_or(row);
    toggle(row);
    return row;
}

int BackupChangesViewModel::stepOut(int row) {
    const DisplayRow* shown = rowAt(row);
    if (!shown || !shown->isExpandable || !shown->isExpanded)
        return m_rows.parentOf(row).value_or(row);
    toggle(row);
    return row;
}

void BackupChangesViewModel::close() {
    m_isClosed = true;
    if (m_changes)
        m_changes->cancel();
}

} // namespace tallyglass
