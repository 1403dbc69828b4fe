// A single-shot timer as models use it, so that a test can put one of its own in the place of the real one.
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

    /// Fires once, this many seconds from now; replaces a start before it.
    virtual void start(double seconds) = 0;
    virtual void stop() = 0;

signals:
    void timeout();
};

using TimerFactory = std::function<std::unique_ptr<Timer>()>;

} // namespace tallyglass
