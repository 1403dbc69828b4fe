// What one path is in one backup, and a run of backups that hold the same version of it. Values; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// One path in one backup. Identified by `backupRoot`.
struct FileVersion {
    std::string backupRoot;
    std::optional<Date> backupDate; ///< parsed from the root's last component
    std::string path;               ///< the full path inside the backup
    bool exists = false;
    std::optional<std::int64_t> size;   ///< bytes; absent for a folder or a missing item
    std::optional<Date> modified;       ///< in whole seconds; absent for a missing item
    std::optional<std::uint64_t> inode; ///< absent for a missing item
    bool isDirectory = false;

    /// Inode, size and modification time as text, such as "42|1024|1700000000.0". Two items are the same
    /// version exactly if these are equal; contents are never read.
    [[nodiscard]] std::string fingerprint() const;

    /// Whether both have the same fingerprint, without making it.
    [[nodiscard]] bool isSameVersion(const FileVersion& other) const;

    friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

/// A run of backups that hold one version. Identified by its version's `backupRoot`.
struct FileVersionSpan {
    FileVersion version;              ///< the last of `backups`, the most recent one
    std::vector<FileVersion> backups; ///< oldest first

    [[nodiscard]] std::optional<Date> firstSeen() const {
        return backups.empty() ? std::nullopt : backups.front().backupDate;
    }
    [[nodiscard]] std::optional<Date> lastSeen() const {
        return backups.empty() ? std::nullopt : backups.back().backupDate;
    }
    [[nodiscard]] std::int64_t backupCount() const { return static_cast<std::int64_t>(backups.size()); }

    friend bool operator==(const FileVersionSpan&, const FileVersionSpan&) = default;
};

} // namespace tallyglass
