// Waits in a test that needs Qt: lets the event loop run until something is so. Main thread only.

#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace tallyglass::test {

/// Returns when `condition` holds, and fails the test when it doesn't within a time that only a hanging
/// program needs.
template <typename Condition>
void until(Condition condition) {
    const QDeadlineTimer deadline(20000);
    while (!condition()) {
        ASSERT_FALSE(deadline.hasExpired()) << "waited in vain";
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(1);
    }
}

} // namespace tallyglass::test
