// The status of one file system item, without opening it. A value; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tallyglass {

struct FileStatus {
    enum class Kind { file, folder, symbolicLink, other };

    Kind kind = Kind::file;
    std::uint64_t device = 0; ///< the file system that holds the item, within which `inode` is unique
    std::uint64_t inode = 0;
    std::int64_t size = 0;                ///< bytes of the contents; for a link, of its target's path
    std::int64_t modifiedSeconds = 0;     ///< since 1970, rounded down
    std::int32_t modifiedNanoseconds = 0; ///< added to modifiedSeconds

    [[nodiscard]] bool isFolder() const { return kind == Kind::folder; }
    [[nodiscard]] Date modified() const {
        return dateSince1970(static_cast<double>(modifiedSeconds) + modifiedNanoseconds * 1e-9);
    }

    /// The status of the item at `path`, without following a symbolic link; absent on any failure.
    [[nodiscard]] static std::optional<FileStatus> of(const std::string& path);

    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// Whether there is an item at `path`; symbolic links are followed.
[[nodiscard]] bool fileExists(const std::string& path);

/// Whether the permissions of the item let this process read it; symbolic links are followed. Opening it can
/// still fail.
[[nodiscard]] bool isReadable(const std::string& path);

/// Whether there is a regular file at `path`, or a symbolic link to one, that this process may execute.
[[nodiscard]] bool isExecutableFile(const std::string& path);

/// 0 if the file at `path` can be opened for reading, else the platform's error number. Reads nothing, keeps
/// nothing open, and doesn't wait for a writer of a pipe.
[[nodiscard]] int openStatus(const std::string& path);

} // namespace tallyglass
