#include "Tallyglass/Screens/BackupChangesState.h"

#include "Tallyglass/Screens/Words.h"

namespace tallyglass {

BackupChangesState::BackupChangesState(QObject* parent) : ModelView(parent) {}
BackupChangesState::~BackupChangesState() = default;

void BackupChangesState::setTarget(const QVariant& target) {
    if (!m_hasLoaded && target.canConvert<TimelinePoint>()) {
        m_target = target.value<TimelinePoint>();
        scheduleUpdate();
    }
}

QVariant BackupChangesState::target() const {
    return m_target ? QVariant::fromValue(*m_target) : QVariant();
}

Workspace* BackupChangesState::workspace() const {
    return model() ? model()->surroundings().workspace : nullptr;
}

Date BackupChangesState::targetDate() const {
    if (m_target)
        return m_target->date;
    const TMDestination* destination = model()->selectedDestination();
    return destination && !destination->snapshotDates.empty() ? destination->snapshotDates.back()
                                                              : model()->now();
}

void BackupChangesState::update() {
    if (m_isClosed)
        return;
    if (!m_changes)
        makeChanges();
    if (!m_hasLoaded && model()->fdaStatus() == FDAStatus::granted)
        load();
    m_content = backupChangesContent(*model(), *m_changes, targetDate());
}

void BackupChangesState::makeChanges() {
    m_changes = std::make_unique<BackupChangesModel>(model()->surroundings());
    for (const auto topic : {&BackupChangesModel::backupsChanged, &BackupChangesModel::progressChanged,
                             &BackupChangesModel::elapsedChanged, &BackupChangesModel::resultChanged,
                             &BackupChangesModel::errorChanged})
        connect(m_changes.get(), topic, this, &BackupChangesState::scheduleUpdate);
    connect(m_changes.get(), &BackupChangesModel::rowsChanged, this, [this] {
        m_rows.setRows(m_changes->visibleRows(), m_changes->tree());
        scheduleUpdate();
    });
}

void BackupChangesState::load() {
    m_hasLoaded = true;
    m_target = TimelinePoint{targetDate()};
    m_changes->load(m_target->date, depth);
}

QString BackupChangesState::searchText() const {
    return m_changes ? words(m_changes->searchText()) : QString();
}

void BackupChangesState::setSearchText(const QString& text) {
    if (!m_changes || text == searchText())
        return;
    m_changes->setSearchText(text.toStdString());
    emit filterChanged();
}

bool BackupChangesState::showContentChangesOnly() const {
    return !m_changes || m_changes->showContentChangesOnly();
}

void BackupChangesState::setShowContentChangesOnly(bool contentOnly) {
    if (!m_changes || contentOnly == showContentChangesOnly())
        return;
    m_changes->setShowContentChangesOnly(contentOnly);
    emit filterChanged();
}

const DisplayRow* BackupChangesState::rowAt(int row) const {
    return row >= 0 && row < m_rows.rowCount() ? &m_changes->visibleRows()[static_cast<std::size_t>(row)]
                                               : nullptr;
}

void BackupChangesState::expand(const std::string& path) {
    const ChangeRecord* folder = m_changes ? m_changes->tree().find(path) : nullptr;
    if (folder && !m_changes->tree().isExpanded(path))
        m_changes->toggleExpand(*folder);
}

void BackupChangesState::toggle(int row) {
    const DisplayRow* shown = rowAt(row);
    if (shown && shown->isExpandable) // the hits of a search aren't
        m_changes->toggleExpand(*shown->change);
}

int BackupChangesState::stepIn(int row) {
    const DisplayRow* shown = rowAt(row);
    if (!shown || !shown->isExpandable)
        return row;
    if (shown->isExpanded)
        return m_rows.firstChildOf(row).value_or(row);
    toggle(row);
    return row;
}

int BackupChangesState::stepOut(int row) {
    const DisplayRow* shown = rowAt(row);
    if (!shown || !shown->isExpandable || !shown->isExpanded)
        return m_rows.parentOf(row).value_or(row);
    toggle(row);
    return row;
}

void BackupChangesState::close() {
    m_isClosed = true;
    if (m_changes)
        m_changes->cancel();
}

} // namespace tallyglass
