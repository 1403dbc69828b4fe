// The only object that reads and writes the diff cache (TallyglassDatabase). Thread-safe: operations run one
// at a time on its one connection, in the order of their calls, each a single transaction. Several stores may
// be open on one file; each waits for another's lock while that one makes progress, and 5 seconds longer.
//
// All operations throw DatabaseError when the database fails. Those that take a stop token throw Cancelled
// when it is stopped, also while they wait.

#pragma once

#include "TallyglassKit/Comparison/ChangeOrder.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Comparison/DirectoryRollup.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/Error.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass {

class Connection;

/// A run's row was changed by another run.
class RunReplaced : public Error {
public:
    RunReplaced() : Error("Another run of this comparison has taken its place.") {}
};

class BackupStore {
public:
    /// Opens the cache at `url`, usually TallyglassDatabase::defaultURL(). Throws as makeQueue does.
    explicit BackupStore(const std::filesystem::path& url, Clock clock = systemTime);
    /// A store on a connection made by TallyglassDatabase::makeQueue.
    explicit BackupStore(std::unique_ptr<Connection> connection, Clock clock = systemTime);
    ~BackupStore();

    /// The comparison of these operands with these options, if a run of it has ended without error.
    [[nodiscard]] std::optional<Comparison> completedComparison(const std::string& fromPath,
                                                                const std::string& toPath,
                                                                const CompareOptions& options,
                                                                std::stop_token stop = {});
    /// The comparison, partial or not.
    [[nodiscard]] std::optional<Comparison> comparison(const std::string& id, std::stop_token stop = {});
    /// The comparisons with these identifiers, in their order; absent where there is none. One state of the
    /// cache.
    [[nodiscard]] std::vector<std::optional<Comparison>> comparisons(std::span<const std::string> ids,
                                                                     std::stop_token stop = {});
    /// The comparisons of these operands, with any options, that have ended without error: the deepest first
    /// (without a limit before any depth), equally deep ones in descending order of start.
    [[nodiscard]] std::vector<Comparison>
    completedComparisons(const std::string& fromPath, const std::string& toPath, std::stop_token stop = {});
    /// In descending order of start.
    [[nodiscard]] std::vector<Comparison> allComparisons();

    /// Stores `comparison` as running and without rows, and removes earlier rows of it. Returns what it
    /// stored.
    Comparison beginComparison(const Comparison& comparison, std::stop_token stop = {});
    /// Adds all of the rows or, on failure, none, and counts them in the comparison `comparisonID`, if it
    /// exists. Each row belongs to the comparison in its own comparisonID, which must exist.
    void appendChanges(std::span<const ChangeRecord> changes, const std::string& comparisonID);
    /// Ends a run: with an error text it stays partial. Does nothing if there is no such comparison.
    void finishComparison(const std::string& id, const std::optional<std::string>& error);
    /// Removes the comparison, if it exists, with its rows.
    void deleteComparison(const std::string& id);

    // The same for concurrent runs of one comparison, in one process or several. A run is identified by its
    // row as of its last write. If the row differs, another run has begun, and these change nothing.

    /// Begins the comparison, unless a run has ended without error: then returns its row.
    Comparison beginUnlessCompleted(const Comparison& comparison, std::stop_token stop = {});
    /// Adds rows of the run's comparison and returns its row. Throws RunReplaced, also for a deleted row.
    Comparison appendChanges(std::span<const ChangeRecord> changes, const Comparison& run,
                             std::stop_token stop = {});
    /// Ends the run and returns its row; absent if that was deleted. Throws RunReplaced. With an error, waits
    /// at most 5 seconds for the locks of others.
    std::optional<Comparison> finishComparison(const Comparison& run, const std::optional<std::string>& error,
                                               std::stop_token stop = {});
    /// Begins the run again with its first rows, replacing the row that it has `seen`, and returns its row;
    /// absent if the row has changed since. `isAll` means that there are no further rows: the run then ends.
    std::optional<Comparison> takeOver(const std::optional<Comparison>& seen, const Comparison& run,
                                       std::span<const ChangeRecord> changes, bool isAll,
                                       std::stop_token stop = {});

    /// Rows of a comparison in the order of their paths. Absent or empty `kinds` means all kinds. `search` is
    /// a part of the path, ignoring ASCII case, in which "%" and "_" are wildcards; white space alone means
    /// no search.
    [[nodiscard]] std::vector<ChangeRecord> changes(const std::string& comparisonID,
                                                    const std::optional<std::set<ChangeKind>>& kinds,
                                                    const std::optional<std::string>& search,
                                                    std::int64_t limit, std::int64_t offset,
                                                    std::stop_token stop = {});
    /// The same in another order; a negative limit means all.
    [[nodiscard]] std::vector<ChangeRecord> changes(const std::string& comparisonID,
                                                    const std::optional<std::set<ChangeKind>>& kinds,
                                                    const std::optional<std::string>& search,
                                                    ChangeOrder order, std::int64_t limit,
                                                    std::int64_t offset, std::stop_token stop = {});
    /// The first rows of a comparison. ChangePages reads all rows without keeping others from the store for
    /// long.
    [[nodiscard]] std::vector<ChangeRecord> changes(const std::string& comparisonID, ChangeOrder order,
                                                    std::int64_t limit, std::stop_token stop = {}) {
        return changes(comparisonID, std::nullopt, std::nullopt, order, limit, 0, std::move(stop));
    }
    /// The number of rows, counted.
    [[nodiscard]] std::int64_t changeCount(const std::string& comparisonID);
    /// The folders with the largest absolute sum of size deltas, in descending order.
    [[nodiscard]] std::vector<DirectoryRollup> rollups(const std::string& comparisonID, std::int64_t limit,
                                                       std::stop_token stop = {});
    /// The changes of a path in all comparisons, in descending order of `toDate`.
    [[nodiscard]] std::vector<std::pair<Comparison, ChangeRecord>> history(const std::string& path,
                                                                           std::stop_token stop = {});
    /// Rows of all comparisons whose path has a word with the prefix, for every word of `text`. In no order.
    [[nodiscard]] std::vector<ChangeRecord> searchPaths(const std::string& text, std::int64_t limit,
                                                        std::stop_token stop = {});

private:
    friend class ChangePages;
    class Operation;
    class Turn;

    const Clock m_clock;
    std::mutex m_mutex;
    std::condition_variable_any m_turnEnded;
    std::list<const Turn*> m_turns; // the first has the connection; guarded by the mutex

    // Used by the first turn only.
    std::chrono::steady_clock::time_point m_lastUse;
    std::chrono::steady_clock::time_point m_lastPause;
    const std::unique_ptr<Connection> m_connection;
};

} // namespace tallyglass
