#include "TallyglassKit/Platform/Files/Folders.h"

#include "TallyglassKit/Platform/Files/FolderWalk.h"

namespace tallyglass {

std::vector<std::string> folderNames(const std::string& path) {
    return OpenFolder(path).readNames();
}

void removeItem(const std::string& path, std::stop_token stop) {
    remove(WalkItem::at(path), Removal::asPermitted, stop);
}

} // namespace tallyglass
