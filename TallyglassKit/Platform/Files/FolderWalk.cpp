#include "TallyglassKit/Platform/Files/FolderWalk.h"

#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace tallyglass {

WalkItem WalkItem::at(const std::string& path) {
    // A trailing slash would make the system follow a link.
    const auto end = path.find_last_not_of('/');
    std::string bare = end == std::string::npos ? path.substr(0, 1) : path.substr(0, end + 1);
    const WalkItem item{AT_FDCWD, bare, bare};
    const auto name = std::string_view(bare).substr(bare.rfind('/') + 1);
    if (name == "." || name == ".." || bare == "/")
        item.fail(EINVAL); // a removal would only fail after emptying the folder
    return item;
}

struct stat WalkItem::status() const {
    struct stat status {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        fail();
    return status;
}

void WalkItem::fail(int error) const {
    throw FileError(error, path);
}

void WalkItem::fail() const {
    fail(errno);
}

OpenFolder::OpenFolder(const WalkItem& item) : m_path(item.path) {
    FileDescriptor folder(
        openat(item.folder, item.name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!folder.isOpen())
        item.fail();
    m_folder.reset(fdopendir(folder.fd()));
    if (!m_folder)
        item.fail();
    folder.release();
}

OpenFolder::OpenFolder(const std::string& path) : m_path(path), m_folder(opendir(path.c_str())) {
    if (!m_folder)
        throw FileError(errno, path);
}

std::vector<std::string> OpenFolder::readNames() {
    std::vector<std::string> names;
    while (true) {
        errno = 0;
        const dirent* entry = readdir(m_folder.get());
        if (!entry && errno != 0)
            throw FileError(errno, m_path);
        if (!entry)
            break;
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    std::ranges::sort(names);
    return names;
}

WalkItem OpenFolder::item(std::string name) const {
    std::string path = m_path;
    if (!path.ends_with('/'))
        path += '/';
    path += name;
    return {fd(), std::move(name), std::move(path)};
}

void remove(const WalkItem& item, Removal removal, const std::stop_token& stop) {
    if (stop.stop_requested())
        throw Cancelled();
    if (unlinkat(item.folder, item.name.c_str(), 0) == 0)
        return;
    const int error = errno;
    if (!S_ISDIR(item.status().st_mode))
        item.fail(error);
    if (removal == Removal::forced)
        fchmodat(item.folder, item.name.c_str(), S_IRWXU, 0);
    OpenFolder folder(item);
    for (std::string& name : folder.readNames())
        remove(folder.item(std::move(name)), removal, stop);
    if (unlinkat(item.folder, item.name.c_str(), AT_REMOVEDIR) != 0)
        item.fail();
}

} // namespace tallyglass
