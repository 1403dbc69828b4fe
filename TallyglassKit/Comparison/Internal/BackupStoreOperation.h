// Exclusive access to a BackupStore's connection for one operation.

#pragma once

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Persistence/Connection.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <stop_token>

namespace tallyglass {

/// Holds the connection for its lifetime. The wait for that, statements and their waits for locks end with
/// Cancelled soon after a stop, and waits fail at `waitEnd`.
class BackupStore::Operation {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    explicit Operation(BackupStore& store, std::stop_token stop = {}, std::optional<TimePoint> waitEnd = {})
        : m_turn(store, stop, waitEnd), m_stop(*store.m_connection, std::move(stop), waitEnd) {}

private:
    class Turn {
    public:
        Turn(BackupStore& store, const std::stop_token& stop, std::optional<TimePoint> waitEnd);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        BackupStore& m_store;
    };

    const Turn m_turn;
    const StopScope m_stop;
};

} // namespace tallyglass
