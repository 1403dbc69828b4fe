// Why runs that meet come to an end: a run takes the row without waiting only from one that has no changes
// yet, has failed, or can't answer it because it is older. The first happens once for each run that begins,
// since a row is taken over together with its first changes; the second once for each failure; and where
// being older counts, the newest run wins. Taking the row from a run that has stopped needs ever more
// patience, so that slow ones don't take it from each other forever. Of several that would take the row, one
// does: it must be as they saw it.

#include "TallyglassKit/Comparison/Internal/ComparisonRun.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Persistence/LockWait.h"
#include "TallyglassKit/Persistence/Timestamp.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace tallyglass {

struct ComparisonRun::Work {
    std::span<const ChangeRecord> changes;
    std::size_t batchSize;
    const OnStored& onStored;
    const std::stop_token& stop;

    [[nodiscard]] std::span<const ChangeRecord> batch(std::size_t start) const {
        return changes.subspan(start, std::min(batchSize, changes.size() - start));
    }
};

namespace {

using SteadyClock = std::chrono::steady_clock;

/// How long a run stores before it lets others have the lock: often enough for those who wait, and seldom
/// enough to cost little.
constexpr std::chrono::milliseconds timeBetweenBreaks{200};

constexpr std::chrono::milliseconds timeBetweenLooks{50};

bool isStoring(const Comparison& row) {
    return row.isPartial && !row.completedAt && row.totalChanges() > 0;
}

/// Throws Cancelled as soon as `stop` is stopped.
void pause(std::chrono::milliseconds length, const std::stop_token& stop) {
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any().wait_for(lock, stop, length, [] { return false; });
    if (stop.stop_requested())
        throw Cancelled();
}

} // namespace

ComparisonRun::ComparisonRun(BackupStore& store, Comparison begun, bool acceptOlder)
    : m_store(store), m_begun(std::move(begun)), m_acceptOlder(acceptOlder), m_row(m_begun) {}

Comparison ComparisonRun::store(std::span<const ChangeRecord> changes, std::size_t batchSize,
                                const OnStored& onStored, const std::stop_token& stop) {
    const Work work{.changes = changes, .batchSize = batchSize, .onStored = onStored, .stop = stop};
    while (true) {
        try {
            storeRest(work);
            return m_store.finishComparison(m_row, std::nullopt, stop).value_or(m_begun);
        } catch (const RunReplaced&) {
            if (auto result = settle(work))
                return *std::move(result);
        }
    }
}

void ComparisonRun::fail(const std::string& why) noexcept {
    try {
        m_store.finishComparison(m_row, why); // takes no stop token: it must happen after a cancellation
    } catch (...) {                           // what made the run fail is the failure to tell
    }
}

void ComparisonRun::storeRest(const Work& work) {
    auto lastBreak = SteadyClock::now();
    while (m_stored < work.changes.size()) {
        if (SteadyClock::now() - lastBreak > timeBetweenBreaks) {
            std::this_thread::sleep_for(breakForOthers);
            lastBreak = SteadyClock::now();
        }
        const auto batch = work.batch(m_stored);
        m_row = m_store.appendChanges(batch, m_row, work.stop);
        m_stored += batch.size();
        work.onStored(m_stored);
    }
}

/// After the row was lost: the result that it holds in the end, or nothing when it is this run's again and
/// changes are left to store.
std::optional<Comparison> ComparisonRun::settle(const Work& work) {
    while (true) {
        const auto seen = waitForOther(work);
        if (seen && !seen->isPartial && isAnsweredBy(*seen))
            return seen;
        const auto batch = work.batch(0);
        const bool isAll = batch.size() == work.changes.size();
        if (auto row = m_store.takeOver(seen, m_begun, batch, isAll, work.stop)) {
            m_row = *row;
            m_stored = batch.size();
            if (!batch.empty())
                work.onStored(m_stored);
            return isAll ? row : std::nullopt;
        }
    }
}

/// The row, when there is nothing to wait for any longer.
std::optional<Comparison> ComparisonRun::waitForOther(const Work& work) {
    auto row = m_store.comparison(m_begun.id, work.stop);
    for (auto lastProgress = SteadyClock::now(); row && isStoring(*row) && isAnsweredBy(*row);) {
        pause(timeBetweenLooks, work.stop);
        auto next = m_store.comparison(m_begun.id, work.stop);
        if (next != row) {
            row = std::move(next);
            lastProgress = SteadyClock::now();
        } else if (SteadyClock::now() - lastProgress >= m_patience) {
            m_patience *= 2;
            break;
        }
    }
    return row;
}

bool ComparisonRun::isAnsweredBy(const Comparison& other) const {
    return m_acceptOlder || other.startedAt >= asStored(m_begun.startedAt);
}

} // namespace tallyglass
