#include "TallyglassKit/Comparison/Internal/BackupStoreOperation.h"

#include "TallyglassKit/Persistence/DatabaseError.h"
#include "TallyglassKit/Persistence/LockWait.h"

#include <sqlite3.h>

#include <thread>

namespace tallyglass {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// How long a store is in use before it pauses for other connections: often enough for them, and seldom
/// enough to cost little.
constexpr std::chrono::milliseconds timeBetweenPauses{200};

} // namespace

BackupStore::Turn::Turn(BackupStore& store, const std::stop_token& stop, std::optional<TimePoint> waitEnd)
    : m_store(store) {
    {
        std::unique_lock lock(store.m_mutex);
        store.m_turns.push_back(this);
        const auto isFirst = [&] { return store.m_turns.front() == this; };
        if (!(waitEnd ? store.m_turnEnded.wait_until(lock, stop, *waitEnd, isFirst)
                      : store.m_turnEnded.wait(lock, stop, isFirst))) {
            store.m_turns.remove(this);
            if (stop.stop_requested())
                throw Cancelled();
            throw DatabaseError(SQLITE_BUSY, sqlite3_errstr(SQLITE_BUSY));
        }
    }
    pauseForOthers();
}

BackupStore::Turn::~Turn() {
    m_store.m_lastUse = SteadyClock::now();
    {
        const std::lock_guard lock(m_store.m_mutex);
        m_store.m_turns.pop_front();
    }
    m_store.m_turnEnded.notify_all();
}

/// Leaves SQLite's locks, which have no queue, to other connections now and then.
void BackupStore::Turn::pauseForOthers() {
    const auto now = SteadyClock::now();
    if (now - m_store.m_lastUse >= lockPause) {
        m_store.m_lastPause = now;
    } else if (now - m_store.m_lastPause > timeBetweenPauses) {
        std::this_thread::sleep_for(lockPause);
        m_store.m_lastPause = SteadyClock::now();
    }
}

} // namespace tallyglass
