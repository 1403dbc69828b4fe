// Copies the sources of a backup into the folder of its volume. What hasn't changed since the backup before
// is hard-linked, so that a backup costs only what is new in it.
//
// One thread. A copier is narrow so that the sample machine can copy without starting programs.

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

/// The codes that a backup of this program can end with by itself.
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
    std::filesystem::path liveRoot;    ///< what logical paths begin at on the computer
    std::vector<std::string> sources;  ///< logical paths of folders, such as "/home/ann"
    std::vector<std::string> excluded; ///< logical paths to leave out
    std::filesystem::path volume;      ///< the new backup's volume folder, which exists
    std::filesystem::path previous;    ///< that of the backup before; empty for the first
    std::optional<std::int64_t> limit; ///< KiB a second
    std::filesystem::path runFolder;   ///< for lists and logs
};

struct CopyProgress {
    std::int64_t bytes = 0;
    std::int64_t files = 0;
};

/// Called every so often while a copy goes on; throws to end it.
using CopyCheckpoint = std::function<void(const CopyProgress&)>;

class SnapshotCopier {
public:
    virtual ~SnapshotCopier() = default;
    /// Throws BackupFailure when the copy isn't whole, and what `checkpoint` throws. Files that the user
    /// may not read are left out, and so are those that vanish meanwhile.
    virtual void copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) = 0;
};

} // namespace tallyglass
