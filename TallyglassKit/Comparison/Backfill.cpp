// The part of DiffEngine that fills the cache ahead of need.

#include "TallyglassKit/Comparison/AdjacentPairs.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Comparison/Internal/BackfillCounters.h"
#include "TallyglassKit/Comparison/Internal/ForegroundRuns.h"

#include <fmt/core.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <iterator>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace tallyglass {

namespace {

constexpr std::size_t batchSize = 500;

class Backfill {
public:
    Backfill(const DiffEngine& engine, ForegroundRuns& foreground, BackupStore& store,
             const CompareOptions& options, std::vector<AdjacentPair> pairs,
             const DiffEngine::OnBackfillProgress& progress, const std::stop_token& stop)
        : m_engine(engine), m_foreground(foreground), m_store(store), m_options(options),
          m_pairs(std::move(pairs)), m_progress(progress), m_stop(stop), m_counters(std::ssize(m_pairs)) {}

    std::vector<Comparison> run(std::int64_t concurrency) {
        const auto total = std::ssize(m_pairs);
        send({.total = total, .currentLabel = fmt::format("Comparing {} backups…", total)});
        {
            std::vector<std::jthread> threads;
            try {
                for (auto count = std::min<std::int64_t>(total, concurrency); count > 1; --count)
                    threads.emplace_back([this] { work(); });
            } catch (const std::system_error&) { // no more threads: these and the calling one do it
            }
            work();
        }
        return std::move(m_finished);
    }

private:
    /// Each thread takes a first pair even after a stop, so that the pairs that were to run are counted.
    void work() {
        do {
            const auto index = m_next++;
            if (index >= m_pairs.size())
                return;
            if (auto comparison = result(m_pairs[index])) {
                const std::lock_guard lock(m_mutex);
                m_finished.push_back(*std::move(comparison));
            }
        } while (!m_stop.stop_requested());
    }

    std::optional<Comparison> result(const AdjacentPair& pair) {
        auto end = BackfillCounters::End::skipped;
        auto comparison = cached(pair);
        if (!comparison) {
            comparison = compared(pair);
            end = comparison ? BackfillCounters::End::compared : BackfillCounters::End::failed;
        }
        send(m_counters.count(end, pair.to.substr(pair.to.rfind('/') + 1)));
        return comparison;
    }

    std::optional<Comparison> cached(const AdjacentPair& pair) {
        try {
            return m_store.completedComparison(pair.from, pair.to, m_options, m_stop);
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }

    std::optional<Comparison> compared(const AdjacentPair& pair) {
        m_foreground.waitForEnd(m_stop);
        try {
            return m_engine.compare(pair.from, pair.to, m_options, false, {}, m_stop);
        } catch (const std::exception&) { // the pair's row records it
            return std::nullopt;
        }
    }

    void send(const DiffEngine::BackfillProgress& event) {
        if (m_progress)
            m_progress(event);
    }

    const DiffEngine& m_engine; // one of its own, whose runs don't count as foreground
    ForegroundRuns& m_foreground;
    BackupStore& m_store;
    const CompareOptions& m_options;
    const std::vector<AdjacentPair> m_pairs; // in the order in which they are begun
    const DiffEngine::OnBackfillProgress& m_progress;
    const std::stop_token& m_stop;
    BackfillCounters m_counters;
    std::atomic<std::size_t> m_next = 0;
    std::mutex m_mutex;
    std::vector<Comparison> m_finished; // guarded by the mutex
};

} // namespace

std::vector<Comparison> DiffEngine::backfillAdjacentPairs(std::int64_t concurrency,
                                                          const CompareOptions& options,
                                                          const OnBackfillProgress& progress,
                                                          const std::stop_token& stop) const {
    auto pairs = adjacentPairs(m_runner.backupPaths(stop), options);
    if (pairs.empty())
        return {};
    std::ranges::reverse(pairs);
    const DiffEngine engine(m_runner, m_store, batchSize, m_clock);
    return Backfill(engine, *m_foreground, m_store, options, std::move(pairs), progress, stop)
        .run(concurrency);
}

} // namespace tallyglass
