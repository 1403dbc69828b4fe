#include "TallyglassKit/Persistence/LockWait.h"

#include <algorithm>
#include <thread>

namespace tallyglass {

namespace {

/// Shorter than the pauses of lock holders, so that no pause is missed.
constexpr std::chrono::milliseconds longestDelay = lockPause - std::chrono::milliseconds(1);

} // namespace

bool LockWait::goesOn(int attempt, const std::stop_token& stop) {
    const auto now = Clock::now();
    if (const Traces present = traces(); attempt == 0 || present != m_traces) {
        m_traces = present;
        m_lastProgress = now;
    }
    const auto end = m_lastProgress + m_timeout;
    const auto left = (m_end ? std::min(end, *m_end) : end) - now;
    if (left <= left.zero() || stop.stop_requested())
        return false;
    const auto pause = std::min(std::chrono::milliseconds(attempt + 1), longestDelay);
    std::this_thread::sleep_for(std::min<Clock::duration>(pause, left));
    return true;
}

LockWait::Traces LockWait::traces() const {
    return {FileStatus::of(m_files[0]), FileStatus::of(m_files[1])};
}

} // namespace tallyglass
