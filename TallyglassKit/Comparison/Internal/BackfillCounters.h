// Counts how the pairs of one backfill end. Thread-safe.

#pragma once

#include "TallyglassKit/Comparison/DiffEngine.h"

#include <cstdint>
#include <mutex>
#include <string>

namespace tallyglass {

class BackfillCounters {
public:
    enum class End : std::uint8_t { skipped, compared, failed };

    explicit BackfillCounters(std::int64_t total) : m_total(total) {}

    /// Counts one more pair. Returns the counters right after that, so that no two calls return the same
    /// number of completed pairs.
    [[nodiscard]] DiffEngine::BackfillProgress count(End end, std::string label) {
        const std::lock_guard lock(m_mutex);
        ++m_completed;
        m_skipped += end == End::skipped;
        m_failed += end == End::failed;
        return {.completed = m_completed,
                .total = m_total,
                .skipped = m_skipped,
                .failed = m_failed,
                .currentLabel = std::move(label)};
    }

private:
    const std::int64_t m_total;
    std::mutex m_mutex;
    std::int64_t m_completed = 0;
    std::int64_t m_skipped = 0;
    std::int64_t m_failed = 0;
};

} // namespace tallyglass
