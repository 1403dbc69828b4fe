// Runs a comparison: looks it up in the cache, runs `tmutil compare`, decodes its output, stores it in
// batches, and records in the comparison's row how the run ended. Several runs of one comparison may be
// active, in one process or several: see ComparisonRun.
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
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass {

class BackupStore;
class ComparisonRun;
class ForegroundRuns;
struct CompareOptions;

class DiffEngine {
public:
    /// `tmutil compare` is running and has written this many bytes of output so far.
    struct Running {
        std::int64_t bytesReceived = 0;
        friend bool operator==(const Running&, const Running&) = default;
    };
    /// The output has been read into changes.
    struct Decoding {
        friend bool operator==(const Decoding&, const Decoding&) = default;
    };
    /// Changes stored so far, and their total.
    struct Storing {
        std::int64_t done = 0;
        std::int64_t total = 0;
        friend bool operator==(const Storing&, const Storing&) = default;
    };
    using Progress = std::variant<Running, Decoding, Storing, Comparison>;

    /// Called on the thread that runs the operation. Must not block.
    using OnProgress = std::function<void(const Progress&)>;

    /// How far backfillAdjacentPairs is; the numbers of one value are consistent.
    struct BackfillProgress {
        std::int64_t completed = 0; ///< pairs that have ended, however
        std::int64_t total = 0;
        std::int64_t skipped = 0; ///< of the completed ones: found in the cache
        std::int64_t failed = 0;  ///< of the completed ones: without result, also for a stop
        std::string currentLabel; ///< what has just ended: the newer backup's name
        friend bool operator==(const BackfillProgress&, const BackfillProgress&) = default;
    };

    /// Called from several threads at once, so that values may arrive out of order. Must neither block nor
    /// throw.
    using OnBackfillProgress = std::function<void(const BackfillProgress&)>;

    struct Backup {
        std::string path;
        std::optional<Date> date; ///< parsed from the path's last component
        friend bool operator==(const Backup&, const Backup&) = default;
    };

    /// Requires: batchSize, the changes of one store transaction, is at least 1.
    DiffEngine(TMUtilRunner runner, BackupStore& store, std::size_t batchSize = 500,
               Clock clock = systemTime);

    /// Compares two backups, given by their roots. With `useCache`, a finished comparison is returned without
    /// running `tmutil`. After a success the last progress is the comparison itself. Throws TMUtilError,
    /// DatabaseError, or Cancelled; the row then records what was stored and why it ended.
    Comparison compare(const std::string& from, const std::string& to, const CompareOptions& options,
                       bool useCache, const OnProgress& progress = {},
                       const std::stop_token& stop = {}) const;

    /// The same for one folder of `volume` in both backups. `folderLogicalPath` begins with "/", or is empty
    /// for the whole volume. The changes have logical paths, like those of compare().
    Comparison compareFolder(const std::string& fromRoot, const std::string& toRoot,
                             const std::string& volume, const std::string& folderLogicalPath,
                             const CompareOptions& options, bool useCache, const OnProgress& progress = {},
                             const std::stop_token& stop = {}) const;

    /// Compares every two neighbouring backups that the cache has no result for, the newest pair first and at
    /// most `concurrency` (at least 1) at a time, in that many threads. Returns the comparisons that are now
    /// finished, in the order in which they were. A pair that fails doesn't stop the others; its row records
    /// why. No pair is begun after a stop, or while another comparison of this engine runs. Never throws, not
    /// even for a stop or without backups.
    std::vector<Comparison> backfillAdjacentPairs(std::int64_t concurrency, const CompareOptions& options,
                                                  const OnBackfillProgress& progress = {},
                                                  const std::stop_token& stop = {}) const;

    /// The backups of the destination, oldest first; empty if they can't be listed.
    [[nodiscard]] std::vector<Backup> availableBackups(const std::stop_token& stop = {}) const;

    /// The same, but throws what the listing throws.
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
    const std::shared_ptr<ForegroundRuns> m_foreground;
};

} // namespace tallyglass
