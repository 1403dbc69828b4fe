// The few file operations that the machine needs beyond the standard library's: replacing a file at once,
// locks that die with their holder, removing a tree whatever its permissions.
//
// Any thread. All fail with FileError.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

/// What happens to a replaced file when the power fails a moment later.
enum class Durability { memory, disk };

/// Puts `contents` at `file`, so that a reader sees either all of the old or all of the new.
void replaceFile(const std::filesystem::path& file, std::string_view contents,
                 Durability durability = Durability::disk);

/// The whole of a file, or nothing when it can't be read.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path& file);

/// Removes what is at `path` with everything in it, folders without write permission included.
void removeTree(const std::filesystem::path& path);

/// An exclusive lock on a file that is made when it is missing. It belongs to the open file: children of a
/// fork hold it too, and it ends when the last of them has gone, however that happens.
class FileLock {
public:
    [[nodiscard]] static FileLock wait(const std::filesystem::path& file);
    [[nodiscard]] static std::optional<FileLock> attempt(const std::filesystem::path& file);
    /// Tests without taking the lock, so that looking never stands in a taker's way.
    [[nodiscard]] static bool isHeld(const std::filesystem::path& file);

    [[nodiscard]] int descriptor() const { return m_file.number(); }

private:
    explicit FileLock(FileDescriptor file) : m_file(std::move(file)) {}
    FileDescriptor m_file;
};

} // namespace tallyglass
