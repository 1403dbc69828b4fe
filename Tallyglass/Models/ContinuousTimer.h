// A timer on the monotonic clock that keeps counting while the computer sleeps: a timeout that expired during
// the sleep fires on waking. Main thread only.

#pragma once

#include "Tallyglass/Models/Timer.h"

#include <memory>

class QSocketNotifier;

namespace tallyglass {

class ContinuousTimer : public Timer {
    Q_OBJECT

public:
    /// Throws Error if the system has no more timers.
    ContinuousTimer();
    ~ContinuousTimer() override;

    void start(double seconds) override;
    void stop() override;

private:
    void fire();

    int m_fd;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tallyglass
