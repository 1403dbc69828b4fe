#include "TallyglassKit/Comparison/DiffEngine.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Internal/ComparisonRun.h"
#include "TallyglassKit/Comparison/Internal/ForegroundRuns.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"
#include "TallyglassKit/Platform/Error.h"

#include <iterator>
#include <utility>

namespace tallyglass {

struct DiffEngine::Operands {
    std::string from;
    std::string to;
    std::vector<std::string> stripRoots;
    std::optional<Date> fromDate;
    std::optional<Date> toDate;
};

namespace {

void throwIfStopped(const std::stop_token& stop) {
    if (stop.stop_requested())
        throw Cancelled();
}

} // namespace

DiffEngine::DiffEngine(TMUtilRunner runner, BackupStore& store, std::size_t batchSize, Clock clock)
    : m_runner(std::move(runner)), m_store(store), m_batchSize(batchSize), m_clock(std::move(clock)),
      m_foreground(std::make_shared<ForegroundRuns>()) {}

Comparison DiffEngine::compare(const std::string& from, const std::string& to, const CompareOptions& options,
                               bool useCache, const OnProgress& progress, const std::stop_token& stop) const {
    return runComparison({.from = from,
                          .to = to,
                          .stripRoots = {from, to},
                          .fromDate = BackupPath::timestampOfRoot(from),
                          .toDate = BackupPath::timestampOfRoot(to)},
                         options, useCache, progress, stop);
}

Comparison DiffEngine::compareFolder(const std::string& fromRoot, const std::string& toRoot,
                                     const std::string& volume, const std::string& folderLogicalPath,
                                     const CompareOptions& options, bool useCache, const OnProgress& progress,
                                     const std::stop_token& stop) const {
    const std::string folder = "/" + volume + folderLogicalPath;
    return runComparison({.from = fromRoot + folder,
                          .to = toRoot + folder,
                          .stripRoots = {fromRoot, toRoot},
                          .fromDate = BackupPath::timestampOfRoot(fromRoot),
                          .toDate = BackupPath::timestampOfRoot(toRoot)},
                         options, useCache, progress, stop);
}

Comparison DiffEngine::runComparison(const Operands& operands, const CompareOptions& options, bool useCache,
                                     const OnProgress& progress, const std::stop_token& stop) const {
    const auto send = [&](const Progress& event) {
        if (progress)
            progress(event);
    };
    if (useCache) {
        if (const auto cached = m_store.completedComparison(operands.from, operands.to, options, stop)) {
            send(*cached);
            return *cached;
        }
    }

    const ForegroundRuns::Run foreground(*m_foreground);
    const Comparison built(operands.from, operands.to, operands.fromDate, operands.toDate,
                           options.depth.value_or(0), options.cacheKey(), m_clock());
    const auto begun =
        useCache ? m_store.beginUnlessCompleted(built, stop) : m_store.beginComparison(built, stop);
    if (!begun.isPartial) { // another run has finished meanwhile
        send(begun);
        return begun;
    }

    // From here on, however the run ends, the row records it.
    ComparisonRun run(m_store, begun, useCache);
    try {
        const auto finished = fill(run, begun.id, operands, options, send, stop);
        send(finished);
        return finished;
    } catch (const Cancelled&) {
        run.fail(std::string(Comparison::cancelled));
        throw;
    } catch (const std::exception& failure) {
        run.fail(failure.what());
        throw;
    }
}

Comparison DiffEngine::fill(ComparisonRun& run, const std::string& id, const Operands& operands,
                            const CompareOptions& options, const OnProgress& send,
                            const std::stop_token& stop) const {
    send(Running{});
    const auto changes = TMUtilCompare::compare(
                             m_runner, operands.from, operands.to, operands.stripRoots, options, id,
                             [&](std::int64_t total) { send(Running{total}); }, stop)
                             .changes;
    throwIfStopped(stop);
    send(Decoding{});
    const auto sendStored = [&](std::size_t done) {
        send(Storing{static_cast<std::int64_t>(done), std::ssize(changes)});
    };
    return run.store(changes, m_batchSize, sendStored, stop);
}

std::vector<DiffEngine::Backup> DiffEngine::availableBackups(const std::stop_token& stop) const {
    try {
        return availableBackupsThrowing(stop);
    } catch (const std::exception&) {
        return {};
    }
}

std::vector<DiffEngine::Backup> DiffEngine::availableBackupsThrowing(const std::stop_token& stop) const {
    std::vector<Backup> backups;
    for (auto& path : m_runner.backupPathsThrowing(stop)) {
        const auto date = BackupPath::timestampOfRoot(path);
        backups.push_back({std::move(path), date});
    }
    return backups;
}

} // namespace tallyglass
