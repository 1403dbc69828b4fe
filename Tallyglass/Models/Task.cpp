#include "Tallyglass/Models/Task.h"

#include "TallyglassKit/Platform/Error.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <cstdlib>
#include <limits>

namespace tallyglass {
namespace {

/// Jobs mostly wait, for a child, a disk or each other, so that each has a thread at once; idle ones serve
/// the next jobs and end after half a minute.
class Pool : public QThreadPool {
public:
    Pool() { setMaxThreadCount(std::numeric_limits<int>::max()); }

    static Pool& shared() {
        static Pool pool;
        return pool;
    }
};

/// Stopped at the end of the application; the next one, as in a test, has a new one.
std::stop_source& applicationLife() {
    static std::stop_source source;
    return source;
}

/// Milliseconds that jobs have once they are told to stop: more than a child takes that has to be killed.
constexpr int longestEnd = 10'000;

/// The last jobs end with the application. Later they could meet what the end of the process has taken away;
/// so if one hangs, as in a file of a disk that doesn't answer, the process ends where it is.
void endJobs() {
    applicationLife().request_stop();
    if (!Pool::shared().waitForDone(longestEnd))
        std::_Exit(EXIT_SUCCESS);
    applicationLife() = std::stop_source();
}

void endJobsWithTheApplication() {
    qAddPostRoutine(endJobs);
}
Q_COREAPP_STARTUP_FUNCTION(endJobsWithTheApplication)

} // namespace

/// Lives on the main thread as the receiver's child, so that it goes with the receiver, and what was posted
/// to it goes with it.
class TaskMailbox::Door : public QObject {
public:
    Door(QObject* receiver, TaskMailbox* mailbox) : QObject(receiver), m_mailbox(mailbox) {}

    ~Door() override {
        if (m_mailbox)
            m_mailbox->takeDoor();
    }

    TaskMailbox* m_mailbox; ///< null once it let go of the door
};

TaskMailbox::TaskMailbox(QObject* receiver)
    : m_receiver(receiver), m_door(new Door(receiver, this)),
      m_applicationEnd(applicationLife().get_token(), [this] { stop(); }) {}

void TaskMailbox::deliver(std::function<void()> action) {
    const std::lock_guard lock(m_mutex);
    if (!m_door)
        return;
    const auto unlessClosed = [door = m_door, action = std::move(action)] {
        if (door->m_mailbox)
            action();
    };
    QMetaObject::invokeMethod(m_door, unlessClosed, Qt::QueuedConnection);
}

void TaskMailbox::close() {
    Door* const door = takeDoor();
    if (!door)
        return;
    door->m_mailbox = nullptr;
    door->deleteLater(); // it may be delivering just now
}

TaskMailbox::Door* TaskMailbox::takeDoor() {
    Door* door = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        door = std::exchange(m_door, nullptr);
    }
    if (m_stopsWhenClosed)
        m_stop.request_stop();
    return door;
}

bool TaskMailbox::isClosed() const {
    const std::lock_guard lock(m_mutex);
    return !m_door;
}

TaskHandle& TaskHandle::operator=(TaskHandle&& other) noexcept {
    if (this != &other) {
        cancel();
        m_mailbox = std::move(other.m_mailbox);
    }
    return *this;
}

void TaskHandle::stop() {
    if (m_mailbox)
        m_mailbox->stop();
}

void TaskHandle::cancel() {
    if (m_mailbox)
        m_mailbox->close();
    m_mailbox.reset();
}

std::string describe(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

bool isCancellation(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Cancelled&) {
        return true;
    } catch (...) {
        return false;
    }
}

void runOnPool(std::function<void()> job) {
    Pool::shared().start(std::move(job));
}

} // namespace tallyglass
