// The file "user-dirs.dirs" has lines such as XDG_DESKTOP_DIR="$HOME/Desktop", in the syntax of a shell: the
// value is quoted, begins with "$HOME/" or "/", and a backslash takes the meaning from the character after
// it. As in a shell, the last line of a name counts.

#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

namespace {

/// Of a file with a dozen lines.
constexpr std::size_t mostBytes = std::size_t{1} << 20;

std::filesystem::path configurationFolder() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder == '/')
        return folder;
    return homeFolder() / ".config";
}

/// The text in quotes at the beginning of `value`; absent if there is none.
std::optional<std::string> unquoted(std::string_view value) {
    if (!value.starts_with('"'))
        return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < value.size() && value[i] != '"'; ++i) {
        if (value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}

std::optional<std::filesystem::path> folderIn(std::string_view line, std::string_view name) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with('='))
        return std::nullopt;
    const auto value = unquoted(line.substr(name.size() + 1));
    if (!value)
        return std::nullopt;
    constexpr std::string_view home = "$HOME/";
    if (value->starts_with(home))
        return homeFolder() / value->substr(home.size());
    return value->starts_with('/') ? std::optional<std::filesystem::path>(*value) : std::nullopt;
}

} // namespace

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    std::array<char, 16384> texts{};
    passwd entry{};
    passwd* user = nullptr;
    getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &user);
    return user ? user->pw_dir : "/";
}

std::filesystem::path desktopFolder() {
    auto folder = homeFolder() / "Desktop";
    try {
        const ByteBuffer bytes = readFile(configurationFolder() / "user-dirs.dirs", {}, mostBytes);
        for (std::string_view rest = bytes; !rest.empty();) {
            const auto end = std::min(rest.find('\n'), rest.size());
            if (auto found = folderIn(rest.substr(0, end), "XDG_DESKTOP_DIR"))
                folder = std::move(*found);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    } catch (const FileError&) { // there need not be one
    }
    return folder;
}

} // namespace tallyglass
