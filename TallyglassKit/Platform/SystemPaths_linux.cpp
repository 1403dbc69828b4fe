#include "TallyglassKit/Platform/SystemPaths.h"
#include "TallyglassKit/Platform/UserFolders.h"

#include <cstdlib>

namespace tallyglass {

SystemPaths SystemPaths::standard() {
    if (const char* root = std::getenv("TALLYGLASS_ROOT"); root && *root)
        return SystemPaths(root);
    return SystemPaths(applicationSupportFolder() / "Tallyglass" / "root");
}

std::filesystem::path SystemPaths::applicationSupportFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/')
        return data;
    return homeFolder() / ".local" / "share";
}

} // namespace tallyglass
