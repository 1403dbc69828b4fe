// The only object that reads and writes the diff cache (TallyglassDatabase). Thread-safe: operations run one
// at a time on its one connection, each a single transaction. Several stores may be open on one file; each
// waits for another's lock while that one gets on with its work, and 5 seconds longer.
//
// All operations throw DatabaseError when the database fails. Those that take a stop token throw Cancelled
// when it is stopped, also while they wait.

#pragma once

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Comparison/DirectoryRollup.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/Error.h"

#include <condition_variable>
#include <filesystem>
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

/// A run wants to write to a row that is no longer as it left it.
class RunReplaced : public Error {
public:
    RunReplaced() : Error("Another run of this comparison has taken its place.") {}
};

class BackupStore {
public:
    /// Opens the cache at `url`, most often TallyglassDatabase::defaultURL(). Throws as makeQueue does.
    explicit BackupStore(const std::filesystem::path& url, Clock clock = systemTime);
    /// A store on a connection made by TallyglassDatabase::makeQueue.
    explicit BackupStore(std::unique_ptr<Connection> connection, Clock clock = systemTime);
    ~BackupStore();

    /// The comparison of these operands under these options, if a run of it has ended without error.
    [[nodiscard]] std::optional<Comparison> completedComparison(const std::string& fromPath,
                                                                const std::string& toPath,
                                                                const CompareOptions& options,
                                                                std::stop_token stop = {});
    /// The comparison, partial or not.
    [[nodiscard]] std::optional<Comparison> comparison(const std::string& id, std::stop_token stop = {});
    /// The one started last comes first.
    [[nodiscard]] std::vector<Comparison> allComparisons();

    /// Stores `comparison` as one that now runs and has no rows; earlier rows of it go. Returns what it
    /// stored.
    Comparison beginComparison(const Comparison& comparison, std::stop_token stop = {});
    /// Adds rows, all or none, and counts them in the comparison `comparisonID`, if there is one. Each row
    /// belongs to the comparison that it names itself, which must exist.
    void appendChanges(std::span<const ChangeRecord> changes, const std::string& comparisonID);
    /// Ends a run: with an error text it stays partial. Does nothing when there is no such comparison.
    void finishComparison(const std::string& id, const std::optional<std::string>& error);
    /// Removes the comparison, if it is there, with its rows.
    void deleteComparison(const std::string& id);

    // The same for runs of one comparison that may meet, in one process or several. A run is given as its row
    // was after its last write. When the row isn't so any longer, these change nothing: another run has
    // begun.

    /// Begins the comparison, unless a run has ended without error: then its row is the answer.
    Comparison beginUnlessCompleted(const Comparison& comparison, std::stop_token stop = {});
    /// Adds rows of the run's comparison and returns its row. Throws RunReplaced, also for a deleted row.
    Comparison appendChanges(std::span<const ChangeRecord> changes, const Comparison& run,
                             std::stop_token stop = {});
    /// Ends the run and returns its row; nothing when that was deleted. Throws RunReplaced. With an error,
    /// waits for the locks of others 5 seconds at most, whatever they do.
    std::optional<Comparison> finishComparison(const Comparison& run, const std::optional<std::string>& error,
                                               std::stop_token stop = {});
    /// Begins the run again with its first rows, in place of the row that it has `seen`, and returns its row;
    /// nothing if the row has changed since. `isAll` says that there are no further rows: the run then ends.
    std::optional<Comparison> takeOver(const std::optional<Comparison>& seen, const Comparison& run,
                                       std::span<const ChangeRecord> changes, bool isAll,
                                       std::stop_token stop = {});

    /// Rows of a comparison in the order of their paths. No kinds, like an empty set, stand for all. In
    /// `search`, a part of the path without regard to ASCII case, "%" and "_" are wildcards; one of blanks
    /// alone is none.
    [[nodiscard]] std::vector<ChangeRecord> changes(const std::string& comparisonID,
                                                    const std::optional<std::set<ChangeKind>>& kinds,
                                                    const std::optional<std::string>& search,
                                                    std::int64_t limit, std::int64_t offset,
                                                    std::stop_token stop = {});
    /// The rows that moved the most bytes, in either direction, the most first; a row without a size delta
    /// counts with its size. Equal ones are in the order of their paths.
    [[nodiscard]] std::vector<ChangeRecord> largestChanges(const std::string& comparisonID,
                                                           std::int64_t limit, std::stop_token stop = {});
    /// How many rows there are, counted.
    [[nodiscard]] std::int64_t changeCount(const std::string& comparisonID);
    /// The folders in which most bytes changed, the greatest amount first.
    [[nodiscard]] std::vector<DirectoryRollup> rollups(const std::string& comparisonID, std::int64_t limit,
                                                       std::stop_token stop = {});
    /// What became of a path in every comparison, the one with the newest `toDate` first.
    [[nodiscard]] std::vector<std::pair<Comparison, ChangeRecord>> history(const std::string& path,
                                                                           std::stop_token stop = {});
    /// Rows of all comparisons whose path has, for every word of `text`, a word that begins with it. In no
    /// order.
    [[nodiscard]] std::vector<ChangeRecord> searchPaths(const std::string& text, std::int64_t limit,
                                                        std::stop_token stop = {});

private:
    class Operation;

    const Clock m_clock;
    std::mutex m_mutex;
    std::condition_variable_any m_isFree;
    bool m_isInUse = false; // whether an operation has the connection; guarded by the mutex
    const std::unique_ptr<Connection> m_connection;
};

} // namespace tallyglass
