#include "Tallyglass/Screens/Context/ItemInBackups.h"

#include "TallyglassKit/Comparison/BackupItem.h"

#include <tuple>
#include <utility>

namespace tallyglass {

void ItemInBackups::setWorkspace(Workspace* workspace) {
    if (workspace == m_workspace)
        return;
    m_workspace = workspace;
    emit workspaceChanged();
}

void ItemInBackups::look(const QString& path, const QString& olderRoot, const QString& newerRoot) {
    m_isInOlder = false;
    m_isInNewer = false;
    m_task = startTask(
        this,
        [item = path.toStdString(), older = olderRoot.toStdString(), newer = newerRoot.toStdString()](
            TaskContext&) { return std::pair(itemInBackup(older, item), itemInBackup(newer, item)); },
        [this](const std::pair<Place, Place>& places) {
            std::tie(m_older, m_newer) = places;
            m_isInOlder = m_older.has_value();
            m_isInNewer = m_newer.has_value();
        },
        [](const std::exception_ptr&) {}); // then it stays unknown
}

void ItemInBackups::showInOlder() {
    if (m_isInOlder)
        reveal(m_older);
}

void ItemInBackups::showInNewer() {
    if (m_isInNewer)
        reveal(m_newer);
}

void ItemInBackups::reveal(const Place& place) {
    if (m_workspace)
        m_workspace->reveal(*place);
}

} // namespace tallyglass
