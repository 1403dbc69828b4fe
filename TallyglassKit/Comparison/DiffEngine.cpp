#include "TallyglassKit/Comparison/DiffEngine.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"
#include "TallyglassKit/Platform/Error.h"

#include <algorithm>
#include <span>
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
    : m_runner(std::move(runner)), m_store(store), m_batchSize(batchSize), m_clock(std::move(clock)) {}

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
        if (const auto cached = m_store.completedComparison(operands.from, operands.to, options)) {
            send(*cached);
            return *cached;
        }
    }

    // From here on the row says how the run ended, in whichever way it does. The clean-up writes take no stop
    // token: they must happen after a cancellation above all.
    const auto comparison =
        m_store.beginComparison(Comparison(operands.from, operands.to, operands.fromDate, operands.toDate,
                                           options.depth.value_or(0), options.cacheKey(), m_clock()));
    const auto finishWith = [&](const std::string& failure) noexcept {
        try {
            m_store.finishComparison(comparison.id, failure);
        } catch (...) { // the failure that brought us here is the one to tell
        }
    };
    try {
        const auto finished = fill(comparison, operands, options, send, stop);
        send(finished);
        return finished;
    } catch (const Cancelled&) {
        finishWith("Cancelled");
        throw;
    } catch (const std::exception& failure) {
        finishWith(failure.what());
        throw;
    }
}

Comparison DiffEngine::fill(const Comparison& comparison, const Operands& operands,
                            const CompareOptions& options, const OnProgress& send,
                            const std::stop_token& stop) const {
    send(Running{});
    const auto decoded = TMUtilCompare::compare(
        m_runner, operands.from, operands.to, operands.stripRoots, options, comparison.id,
        [&](std::int64_t total) { send(Running{total}); }, stop);
    throwIfStopped(stop);
    send(Decoding{});

    const std::span<const ChangeRecord> changes = decoded.changes;
    for (std::size_t done = 0; done < changes.size();) {
        throwIfStopped(stop);
        const auto batch = changes.subspan(done, std::min(m_batchSize, changes.size() - done));
        m_store.appendChanges(batch, comparison.id);
        done += batch.size();
        send(Storing{static_cast<std::int64_t>(done), static_cast<std::int64_t>(changes.size())});
    }
    m_store.finishComparison(comparison.id, std::nullopt);
    return m_store.comparison(comparison.id).value_or(comparison);
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
