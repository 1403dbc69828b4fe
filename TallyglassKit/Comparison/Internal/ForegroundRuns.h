// The comparisons that somebody waits for. They compete with those of a backfill for processors and disks, so
// a backfill begins none while one of them runs. Thread-safe.

#pragma once

#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace tallyglass {

class ForegroundRuns {
public:
    /// Counts as one of them for its lifetime.
    class Run {
    public:
        explicit Run(ForegroundRuns& runs) : m_runs(runs) { m_runs.add(1); }
        ~Run() { m_runs.add(-1); }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        ForegroundRuns& m_runs;
    };

    /// Returns when there is none, or soon after a stop.
    void waitForEnd(const std::stop_token& stop) {
        std::unique_lock lock(m_mutex);
        m_ended.wait(lock, stop, [&] { return m_count == 0; });
    }

private:
    void add(int change) {
        {
            const std::lock_guard lock(m_mutex);
            m_count += change;
        }
        m_ended.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable_any m_ended;
    int m_count = 0;
};

} // namespace tallyglass
