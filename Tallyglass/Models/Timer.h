// A single-shot timer as models use it, so that a test can replace it.
// Main thread only.

#pragma once

#include <QObject>
#include <functional>
#include <memory>

namespace tallyglass {

class Timer : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Fires once, this many seconds from now; replaces an earlier start.
    virtual void start(double seconds) = 0;
    virtual void stop() = 0;

signals:
    void timeout();
};

using TimerFactory = std::function<std::unique_ptr<Timer>()>;

} // namespace tallyglass
