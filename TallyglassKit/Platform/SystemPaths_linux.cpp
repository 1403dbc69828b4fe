#include "TallyglassKit/Platform/SystemPaths.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace tallyglass {

namespace {

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    std::array<char, 16384> texts{};
    passwd entry{};
    passwd* user = nullptr;
    getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &user);
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
