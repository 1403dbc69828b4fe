#include "TallyglassKit/Platform/SystemPaths.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace tallyglass {

namespace {

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    const passwd* user = getpwuid(getuid());
    return user ? user->pw_dir : "/";
}

} // namespace

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
