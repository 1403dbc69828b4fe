// Waiting in a test while Qt's event loop runs. Main thread only.

#pragma once

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace tallyglass::test {

/// Runs the event loop until `condition` holds. Fails the test if it hasn't after a minute.
template <typename Condition>
void waitUntil(Condition condition) {
    constexpr qint64 longestWait = 60'000; // milliseconds
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.elapsed() > longestWait) {
            ADD_FAILURE() << "the condition never held";
            return;
        }
        QEventLoop loop;
        QTimer::singleShot(1, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace tallyglass::test
