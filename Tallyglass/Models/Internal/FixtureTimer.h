// A timer in a world where time stands still: it fires at once for as long as the time that has just passed
// lasts, and then never. Main thread only.

#pragma once

#include "Tallyglass/Models/Timer.h"

#include <QTimer>

namespace tallyglass {

class FixtureTimer : public Timer {
    Q_OBJECT

public:
    /// `passed` are the seconds that have just passed.
    explicit FixtureTimer(double passed) : m_passed(passed) {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, &Timer::timeout);
    }

    void start(double seconds) override {
        m_timer.stop();
        if (seconds > m_passed)
            return;
        m_passed -= seconds;
        m_timer.start(0);
    }
    void stop() override { m_timer.stop(); }

private:
    double m_passed;
    QTimer m_timer;
};

} // namespace tallyglass
