#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"

namespace tallyglass {

FileHistoryViewModel::FileHistoryViewModel(QObject* parent) : ViewModel(parent) {}

FileHistoryViewModel::~FileHistoryViewModel() = default;

void FileHistoryViewModel::makeModel() {
    m_history = std::make_unique<FileHistoryModel>(model()->environment(), *context()->panels());
    for (const auto topic : {&FileHistoryModel::progressChanged, &FileHistoryModel::errorChanged,
                             &FileHistoryModel::exportChanged, &FileHistoryModel::recentPathsChanged})
        connect(m_history.get(), topic, this, &FileHistoryViewModel::scheduleUpdate);
    connect(m_history.get(), &FileHistoryModel::resultChanged, this, &FileHistoryViewModel::takeResult);
    connect(m_history.get(), &FileHistoryModel::pathChanged, this, &FileHistoryViewModel::pathChanged);
    m_history->prepare();
}

void FileHistoryViewModel::update() {
    m_isLocked = model()->fdaStatus() != FDAStatus::granted;
    if (!m_history)
        makeModel();
    m_content = fileHistoryContent(*m_history);
    m_recentPaths = toQStringList(m_history->recentPaths());
}

void FileHistoryViewModel::takeResult() {
    m_rows.setSpans(m_history->spans());
    m_presence = spansOfBackups(m_history->versions(), m_history->spans());
    m_selectedBackup.reset();
    scheduleUpdate();
    emit presenceChanged();
    emit selectedBackupChanged();
}

QString FileHistoryViewModel::path() const {
    return m_history ? toQString(m_history->logicalPath()) : QString();
}

void FileHistoryViewModel::setPath(const QString& path) {
    if (m_history)
        m_history->setLogicalPath(path.toStdString());
}

QString FileHistoryViewModel::hint() const {
    return model() ? pathHint(model()->environment().userName()) : QString();
}

QString FileHistoryViewModel::examplePath() const {
    return model() ? tallyglass::examplePath(model()->environment().userName()) : QString();
}

void FileHistoryViewModel::selectBackup(std::size_t backup) {
    if (backup >= m_presence.size() || backup == m_selectedBackup)
        return;
    m_selectedBackup = backup;
    if (const Presence& span = m_presence[backup])
        emit rowRequested(static_cast<int>(*span));
    emit selectedBackupChanged();
}

QString FileHistoryViewModel::backupText(std::size_t backup) const {
    return presenceText(m_history->versions()[backup], m_presence[backup], m_history->spans().size());
}

void FileHistoryViewModel::scan() {
    if (m_history)
        m_history->scan();
}

void FileHistoryViewModel::cancel() {
    if (m_history)
        m_history->cancelScan();
}

void FileHistoryViewModel::trace(const QString& path) {
    setPath(path);
    scan();
}

void FileHistoryViewModel::traceItem(const QList<QUrl>& urls) {
    const auto items = FilePanels::localFiles(urls);
    if (m_history && !items.empty())
        m_history->trace(items.front());
}

void FileHistoryViewModel::chooseItem() {
    if (m_history)
        m_history->chooseItem();
}

void FileHistoryViewModel::cancelExport() {
    if (m_history)
        m_history->cancelExport();
}

const FileVersionSpan* FileHistoryViewModel::spanAt(int row) const {
    return m_history && row >= 0 && row < m_rows.count() ? &m_history->spans()[static_cast<std::size_t>(row)]
                                                         : nullptr;
}

VersionRowContent FileHistoryViewModel::versionAt(int row) const {
    return spanAt(row) ? versionRowContent(m_history->spans(), static_cast<std::size_t>(row))
                       : VersionRowContent();
}

void FileHistoryViewModel::exportVersion(int row) {
    if (const auto* span = spanAt(row))
        m_history->exportVersion(span->version);
}

void FileHistoryViewModel::open(int row) {
    if (const auto* span = spanAt(row))
        m_history->openVersion(span->version);
}

void FileHistoryViewModel::reveal(int row) {
    if (const auto* span = spanAt(row))
        m_history->revealVersion(span->version);
}

void FileHistoryViewModel::copyPath(int row) {
    if (const auto* span = spanAt(row))
        context()->clipboard()->setText(toQString(span->version.path));
}

void FileHistoryViewModel::compareWithPrevious(int row) {
    const auto* span = spanAt(row);
    const auto* previous = spanAt(row + 1);
    if (span && previous)
        context()->compareBackups(toQString(previous->backups.back().backupRoot),
                                  toQString(span->backups.front().backupRoot));
}

} // namespace tallyglass
