// Keeps what the program writes out of backups, which are never changed. Free function; any thread.

#pragma once

#include <filesystem>

namespace tallyglass {

/// The absolute path without "." and "..", and without links where it exists.
[[nodiscard]] std::filesystem::path resolved(const std::filesystem::path& path);

/// Throws the FileError that refuses to write here, which is in a backup.
[[noreturn]] void refuseBackup(const std::filesystem::path& destination);

/// The absolute path of an item that is to be written at `destination`, without links in its folder. Throws
/// EROFS if it is in a backup, or holds backups.
[[nodiscard]] std::filesystem::path outsideBackups(const std::filesystem::path& destination);

} // namespace tallyglass
