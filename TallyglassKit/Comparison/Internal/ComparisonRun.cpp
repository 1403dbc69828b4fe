// Several runs of one comparison compete for its row. Each write first checks, in its transaction, that the
// row is as the run's last write left it (RunReplaced otherwise). A run that has lost its row returns the
// other run's result if that has finished and is recent enough for it, waits while the other makes progress,
// and otherwise takes the row over together with its own first changes; of several that try, one succeeds,
// because the row must be as they saw it. This terminates: a run takes over without waiting only from a run
// that has no changes yet, has failed, or is too old to serve as its result. The first happens once per run,
// since a row is taken over together with changes; the second once per failure; and among runs that reject
// older results the newest wins. Taking over from a stalled run requires a patience that grows each time, so
// that slow runs don't take the row from each other forever.

#include "TallyglassKit/Comparison/Internal/ComparisonRun.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Persistence/Timestamp.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
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

constexpr std::chrono::milliseconds pollInterval{50};

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
        m_store.finishComparison(m_row, why); // no stop token: it must happen after a cancellation, too
    } catch (...) {                           // the original failure is the one to report
    }
}

void ComparisonRun::storeRest(const Work& work) {
    while (m_stored < work.changes.size()) {
        const auto batch = work.batch(m_stored);
        m_row = m_store.appendChanges(batch, m_row, work.stop);
        m_stored += batch.size();
        work.onStored(m_stored);
    }
}

/// After the row was lost: the other run's result, or nothing if this run has taken the row over and has more
/// changes to store.
std::optional<Comparison> ComparisonRun::settle(const Work& work) {
    while (true) {
        const auto seen = waitForOther(work);
        if (seen && !seen->isPartial && accepts(*seen))
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

/// Waits while another run makes progress, then returns the row.
std::optional<Comparison> ComparisonRun::waitForOther(const Work& work) {
    auto row = m_store.comparison(m_begun.id, work.stop);
    for (auto lastProgress = SteadyClock::now(); row && isStoring(*row) && accepts(*row);) {
        pause(pollInterval, work.stop);
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

bool ComparisonRun::accepts(const Comparison& other) const {
    return m_acceptOlder || other.startedAt >= asStored(m_begun.startedAt);
}

} // namespace tallyglass
