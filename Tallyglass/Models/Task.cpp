#include "Tallyglass/Models/Task.h"

#include "TallyglassKit/Platform/Error.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <cstdlib>
#include <limits>

namespace tallyglass {
namespace {

/// Jobs mostly wait, for a child, a disk or each other, so each gets a thread at once. Idle threads serve the
/// next jobs and end after half a minute.
class Pool : public QThreadPool {
public:
    Pool() { setMaxThreadCount(std::numeric_limits<int>::max()); }

    static Pool& shared() {
        static Pool pool;
        return pool;
    }
};

/// Stopped at the end of the application. Another application in the same process, as in a test, gets a new
/// one.
std::stop_source& applicationLife() {
    static std::stop_source source;
    return source;
}

/// Milliseconds that stopped jobs have to end: more than killing a child takes.
constexpr int longestEnd = 10'000;

/// The last jobs end with the application, because later they could use static objects that are destroyed
/// already. If one hangs, for example on a disk that doesn't answer, the process exits at once.
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

/// The context object of queued calls. It is the receiver's child, so that it is destroyed with the receiver,
/// and Qt then drops what was posted to it.
class TaskMailbox::Context : public QObject {
public:
    Context(QObject* receiver, TaskMailbox* mailbox) : QObject(receiver), m_mailbox(mailbox) {}

    ~Context() override {
        if (m_mailbox)
            m_mailbox->detachContext();
    }

    TaskMailbox* m_mailbox; ///< null once the mailbox is closed
};

TaskMailbox::TaskMailbox(QObject* receiver)
    : m_receiver(receiver), m_context(new Context(receiver, this)),
      m_applicationEnd(applicationLife().get_token(), [this] { stop(); }) {}

void TaskMailbox::deliver(std::function<void()> action) {
    const std::lock_guard lock(m_mutex);
    if (!m_context)
        return;
    const auto unlessClosed = [context = m_context, action = std::move(action)] {
        if (context->m_mailbox)
            action();
    };
    QMetaObject::invokeMethod(m_context, unlessClosed, Qt::QueuedConnection);
}

void TaskMailbox::close() {
    Context* const context = detachContext();
    if (!context)
        return;
    context->m_mailbox = nullptr;
    context->deleteLater(); // one of its calls may be running
}

TaskMailbox::Context* TaskMailbox::detachContext() {
    Context* context = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        context = std::exchange(m_context, nullptr);
    }
    if (m_stopsWhenClosed)
        m_stop.request_stop();
    return context;
}

bool TaskMailbox::isClosed() const {
    const std::lock_guard lock(m_mutex);
    return !m_context;
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
