// How long a statement waits for the lock that another connection holds: as long as that connection makes
// progress, seen as changes of the database file or its journal, and a fixed time longer. One thread at a
// time.

#pragma once

#include "TallyglassKit/Platform/Files/FileStatus.h"

#include <array>
#include <chrono>
#include <optional>
#include <stop_token>
#include <string>

namespace tallyglass {

/// How long a statement waits for the lock of a connection that makes no progress before it fails.
inline constexpr std::chrono::milliseconds defaultLockTimeout{5000};

/// How long the lock must stay free so that waiting connections can take it. SQLite has no queue: a
/// connection that writes without a pause starves all others.
inline constexpr std::chrono::milliseconds lockPause{5};

class LockWait {
public:
    explicit LockWait(std::chrono::milliseconds timeout) : m_timeout(timeout) {}

    /// The files whose changes count as progress.
    void watch(std::array<std::string, 2> files) { m_files = std::move(files); }

    /// With an `end`, waits end then at the latest, even if others make progress.
    void setEnd(std::optional<std::chrono::steady_clock::time_point> end) { m_end = end; }

    /// Waits briefly and returns true, or returns false to give up. `attempt` counts from 0 for each lock.
    [[nodiscard]] bool goesOn(int attempt, const std::stop_token& stop);

private:
    using Clock = std::chrono::steady_clock;
    using Traces = std::array<std::optional<FileStatus>, 2>;

    [[nodiscard]] Traces traces() const;

    const std::chrono::milliseconds m_timeout;
    std::array<std::string, 2> m_files;
    std::optional<Clock::time_point> m_end;
    Traces m_traces;
    Clock::time_point m_lastProgress;
};

} // namespace tallyglass
