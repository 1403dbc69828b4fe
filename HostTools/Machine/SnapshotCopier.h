// Copies the sources of a backup into the folder of its volume. Unchanged files are hard-linked to the
// previous backup, so that a backup only takes space for new ones.
//
// One thread. An interface, so that the sample machine can copy without starting processes.

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// A backup that ends with a result code other than 0.
class BackupFailure : public Error {
public:
    BackupFailure(std::int64_t result, const std::string& description)
        : Error(description), m_result(result) {}
    [[nodiscard]] std::int64_t result() const { return m_result; }

private:
    std::int64_t m_result;
};

/// The result codes of this program's backups.
struct BackupResult {
    static constexpr std::int64_t success = 0;
    static constexpr std::int64_t noSpace = 7;
    static constexpr std::int64_t copyFailed = 11;
    static constexpr std::int64_t destinationMissing = 18;
    static constexpr std::int64_t cancelled = 22;
    static constexpr std::int64_t outOfSpace = 28;
    static constexpr std::int64_t sourceMissing = 37;
};

struct CopyOrder {
    std::filesystem::path liveRoot;    ///< of logical paths on the computer
    std::vector<std::string> sources;  ///< logical paths of folders, such as "/home/ann"
    std::vector<std::string> excluded; ///< logical paths to exclude
    std::filesystem::path volume;      ///< the new backup's volume folder, which exists
    std::filesystem::path previous;    ///< the previous backup's volume folder; empty for the first
    std::optional<std::int64_t> limit; ///< KiB a second
    std::filesystem::path runFolder;   ///< for lists and logs
};

struct CopyProgress {
    std::int64_t bytes = 0;
    std::int64_t files = 0;
};

/// Called regularly during a copy; throws to end it.
using CopyCheckpoint = std::function<void(const CopyProgress&)>;

class SnapshotCopier {
public:
    virtual ~SnapshotCopier() = default;
    /// Throws BackupFailure if the copy is incomplete, and what `checkpoint` throws. Unreadable files, and
    /// those removed meanwhile, are omitted.
    virtual void copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) = 0;
};

} // namespace tallyglass
