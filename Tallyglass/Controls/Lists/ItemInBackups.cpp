#include "Tallyglass/Controls/Lists/ItemInBackups.h"

#include "TallyglassKit/Platform/Files/FileStatus.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

/// The folders of the backed-up volumes, by name. What can't be read has none.
std::vector<fs::path> volumesOf(const std::string& root) {
    std::vector<fs::path> volumes;
    std::error_code failure;
    fs::directory_iterator entry(root, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure))
        if (std::error_code unknown; entry->is_directory(unknown))
            volumes.push_back(entry->path());
    std::ranges::sort(volumes);
    return volumes;
}

} // namespace

void ItemInBackups::setWorkspace(Workspace* workspace) {
    if (workspace == m_workspace)
        return;
    m_workspace = workspace;
    emit workspaceChanged();
}

std::optional<fs::path> ItemInBackups::find(const std::string& root, const std::string& path) {
    if (root.empty() || path.empty())
        return std::nullopt;
    if (path.starts_with(root)) // nothing was stripped from the path of the root itself
        return FileStatus::of(path) ? Place(path) : std::nullopt;
    for (const fs::path& volume : volumesOf(root))
        if (const std::string place = volume.string() + path; FileStatus::of(place))
            return place;
    return std::nullopt;
}

void ItemInBackups::look(const QString& path, const QString& olderRoot, const QString& newerRoot) {
    m_isInOlder = false;
    m_isInNewer = false;
    m_task = startTask(
        this,
        [item = path.toStdString(), older = olderRoot.toStdString(), newer = newerRoot.toStdString()](
            TaskContext&) { return std::pair(find(older, item), find(newer, item)); },
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
