// Runs one comparison from start to end: looks in the cache, runs `tmutil compare`, decodes its output,
// stores it in batches, and keeps the comparison's row true to what happened, however the run ends. Runs of
// one comparison may meet, in one process or several: see ComparisonRun.
//
// Thread-safe and immutable; several comparisons may run at once on one engine. Operations block until done
// and can be stopped. The runner is copied; the store is borrowed and must outlive the engine.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass {

class BackupStore;
class ComparisonRun;
struct CompareOptions;

class DiffEngine {
public:
    /// `tmutil compare` runs and has written that many bytes of output so far.
    struct Running {
        std::int64_t bytesReceived = 0;
        friend bool operator==(const Running&, const Running&) = default;
    };
    /// The output has been read into changes.
    struct Decoding {
        friend bool operator==(const Decoding&, const Decoding&) = default;
    };
    /// Changes in the store so far, and in all.
    struct Storing {
        std::int64_t done = 0;
        std::int64_t total = 0;
        friend bool operator==(const Storing&, const Storing&) = default;
    };
    using Progress = std::variant<Running, Decoding, Storing, Comparison>;

    /// Called on the thread that runs the operation. Must not block.
    using OnProgress = std::function<void(const Progress&)>;

    struct Backup {
        std::string path;
        std::optional<Date> date; ///< absent unless the path's last component spells one
        friend bool operator==(const Backup&, const Backup&) = default;
    };

    /// Requires: batchSize, the changes of one store transaction, is at least 1.
    DiffEngine(TMUtilRunner runner, BackupStore& store, std::size_t batchSize = 500,
               Clock clock = systemTime);

    /// Compares two backups, given by their roots. With `useCache` a finished comparison is returned as it
    /// is, and `tmutil` isn't run. The last progress of a success is the comparison itself; a failure sends
    /// none. Throws TMUtilError, DatabaseError, or Cancelled; the row then holds what was stored and why it
    /// ended.
    Comparison compare(const std::string& from, const std::string& to, const CompareOptions& options,
                       bool useCache, const OnProgress& progress = {},
                       const std::stop_token& stop = {}) const;

    /// The same for one folder of `volume` in both backups. `folderLogicalPath` begins with "/" or is empty,
    /// which means the whole volume. The changes' paths are logical paths, as those of compare() are.
    Comparison compareFolder(const std::string& fromRoot, const std::string& toRoot,
                             const std::string& volume, const std::string& folderLogicalPath,
                             const CompareOptions& options, bool useCache, const OnProgress& progress = {},
                             const std::stop_token& stop = {}) const;

    /// The backups of the destination, oldest first; none when they can't be listed.
    [[nodiscard]] std::vector<Backup> availableBackups(const std::stop_token& stop = {}) const;

    /// The same; throws what the listing throws.
    [[nodiscard]] std::vector<Backup> availableBackupsThrowing(const std::stop_token& stop = {}) const;

private:
    struct Operands;

    Comparison runComparison(const Operands& operands, const CompareOptions& options, bool useCache,
                             const OnProgress& progress, const std::stop_token& stop) const;
    Comparison fill(ComparisonRun& run, const std::string& id, const Operands& operands,
                    const CompareOptions& options, const OnProgress& progress,
                    const std::stop_token& stop) const;

    const TMUtilRunner m_runner;
    BackupStore& m_store;
    const std::size_t m_batchSize;
    const Clock m_clock;
};

} // namespace tallyglass
