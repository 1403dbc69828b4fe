#include "TallyglassKit/Comparison/Internal/BackupStoreOperation.h"

#include "TallyglassKit/Persistence/DatabaseError.h"

#include <sqlite3.h>

namespace tallyglass {

BackupStore::Operation::Turn::Turn(BackupStore& store, const std::stop_token& stop,
                                   std::optional<TimePoint> waitEnd)
    : m_store(store) {
    const auto isFree = [&] { return !store.m_isInUse; };
    std::unique_lock lock(store.m_mutex);
    if (!(waitEnd ? store.m_isFree.wait_until(lock, stop, *waitEnd, isFree)
                  : store.m_isFree.wait(lock, stop, isFree))) {
        if (stop.stop_requested())
            throw Cancelled();
        throw DatabaseError(SQLITE_BUSY, sqlite3_errstr(SQLITE_BUSY));
    }
    store.m_isInUse = true;
}

BackupStore::Operation::Turn::~Turn() {
    {
        const std::lock_guard lock(m_store.m_mutex);
        m_store.m_isInUse = false;
    }
    m_store.m_isFree.notify_one();
}

} // namespace tallyglass
