// Exclusive access to a BackupStore's connection for one operation. Operations have it in the order in which
// they ask for it, so that none waits long beside threads that store without a pause.

#pragma once

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Persistence/Connection.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <stop_token>

namespace tallyglass {

/// A place in the queue for the connection. The constructor waits until it is the first, or throws Cancelled
/// after a stop and DatabaseError at `waitEnd`.
class BackupStore::Turn {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    Turn(BackupStore& store, const std::stop_token& stop, std::optional<TimePoint> waitEnd);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    void pauseForOthers();

    BackupStore& m_store;
};

/// Holds the connection for its lifetime. Statements and their waits for locks end with Cancelled soon after
/// a stop, and waits fail at `waitEnd`.
class BackupStore::Operation {
public:
    explicit Operation(BackupStore& store, std::stop_token stop = {},
                       std::optional<Turn::TimePoint> waitEnd = {})
        : m_turn(store, stop, waitEnd), m_stop(*store.m_connection, std::move(stop), waitEnd) {}

private:
    const Turn m_turn;
    const StopScope m_stop;
};

} // namespace tallyglass
