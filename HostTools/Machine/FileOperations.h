// The few file operations that the machine needs beyond the standard library's: replacing a file atomically,
// locks released with their process, removing a tree despite its permissions.
//
// Any thread. All fail with FileError.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

/// Whether a replaced file survives a power failure.
enum class Durability { memory, disk };

/// Replaces `file` atomically.
void replaceFile(const std::filesystem::path& file, std::string_view contents,
                 Durability durability = Durability::disk);

/// The contents of a file; absent if it can't be read.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path& file);

/// Removes the item recursively, including folders without write permission.
void removeTree(const std::filesystem::path& path);

/// An exclusive lock on a file, which is created if missing. It belongs to the open file description: forked
/// children share it, and it is released when the last of them ends.
class FileLock {
public:
    [[nodiscard]] static FileLock wait(const std::filesystem::path& file);
    [[nodiscard]] static std::optional<FileLock> attempt(const std::filesystem::path& file);
    /// Tests without taking the lock.
    [[nodiscard]] static bool isHeld(const std::filesystem::path& file);

    [[nodiscard]] int fd() const { return m_file.fd(); }

private:
    explicit FileLock(FileDescriptor file) : m_file(std::move(file)) {}
    FileDescriptor m_file;
};

} // namespace tallyglass
