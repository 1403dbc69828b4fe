// How a model runs work that blocks: a job runs on a thread of the pool, and what it posts and its outcome
// arrive on the main thread, in that order, unless the receiver is gone or the handle was cancelled.
//
//     m_task = startTask(this,
//         [runner](TaskContext& task) { return runner.status(task.stopToken()); },
//         [this](BackupStatus status) { ... },
//         [this](const std::exception_ptr& failure) { ... });
//
// The job must capture values or thread-safe objects only, never the receiver.
//
// Handles and their continuations belong to the main thread. Nothing but the callers limits how many jobs run
// at the same time: each has a thread. At the end of the application all jobs are stopped and waited for.

#pragma once

#include <QMetaObject>
#include <QObject>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <type_traits>
#include <utility>

namespace tallyglass {

/// The way from a job back to the main thread. Thread-safe; shared by the job, its handle and the receiver.
///
/// Invariants:
/// 1. Delivered actions run on the main thread, and none runs once the mailbox is closed.
/// 2. A mailbox outlives its context object: the job owns it until the outcome is posted, and then the
/// outcome owns it.
class TaskMailbox {
public:
    explicit TaskMailbox(QObject* receiver);
    TaskMailbox(const TaskMailbox&) = delete;
    TaskMailbox& operator=(const TaskMailbox&) = delete;

    void deliver(std::function<void()> action);
    /// Drops actions that haven't run yet. Main thread only.
    void close();
    [[nodiscard]] bool isClosed() const;
    /// From now on closing the mailbox doesn't stop the job. Main thread only.
    void letFinish() { m_stopsWhenClosed = false; }

    void stop() { m_stop.request_stop(); }
    [[nodiscard]] std::stop_token stopToken() const { return m_stop.get_token(); }
    /// Main thread only.
    [[nodiscard]] QObject* receiver() const { return m_receiver; }

private:
    class Context;

    Context* detachContext();

    QObject* const m_receiver;
    mutable std::mutex m_mutex;
    Context* m_context; ///< null once closed
    bool m_stopsWhenClosed = true;
    std::stop_source m_stop;
    const std::stop_callback<std::function<void()>> m_applicationEnd; ///< declared after what it stops
};

/// The job's view of its task. Used on the job's thread.
class TaskContext {
public:
    explicit TaskContext(std::shared_ptr<TaskMailbox> mailbox) : m_mailbox(std::move(mailbox)) {}

    [[nodiscard]] std::stop_token stopToken() const { return m_mailbox->stopToken(); }

    /// A function for any thread that calls `member` of the receiver on the main thread. Requires: the
    /// receiver is a `Receiver`.
    template <typename Receiver, typename... Arguments>
    [[nodiscard]] auto post(void (Receiver::*member)(Arguments...)) const {
        return [mailbox = m_mailbox, member](std::decay_t<Arguments>... arguments) {
            mailbox->deliver([mailbox, member, ... arguments = std::move(arguments)]() mutable {
                (static_cast<Receiver*>(mailbox->receiver())->*member)(std::move(arguments)...);
            });
        };
    }

private:
    std::shared_ptr<TaskMailbox> m_mailbox;
};

/// Owns one task: destroying or replacing the handle stops the job and drops its outcome.
class [[nodiscard]] TaskHandle {
public:
    TaskHandle() = default;
    explicit TaskHandle(std::shared_ptr<TaskMailbox> mailbox) : m_mailbox(std::move(mailbox)) {}
    ~TaskHandle() { cancel(); }
    TaskHandle(TaskHandle&& other) noexcept = default;
    TaskHandle& operator=(TaskHandle&& other) noexcept;

    /// Asks the job to stop. Its outcome is still delivered: as a rule the failure Cancelled.
    void stop();
    /// Asks the job to stop and drops its outcome.
    void cancel();
    /// Lets the job run to its end even after the handle or the receiver is gone; the outcome is dropped
    /// then.
    void letFinish() { m_mailbox->letFinish(); }
    /// Lets the task go on without the handle, as long as the receiver lives.
    void detach() { m_mailbox.reset(); }
    /// True from the start until the outcome has arrived or was dropped.
    [[nodiscard]] bool isActive() const { return m_mailbox && !m_mailbox->isClosed(); }

private:
    std::shared_ptr<TaskMailbox> m_mailbox;
};

/// The text of a failure: an Error's description, or what() of any other exception.
[[nodiscard]] std::string describe(const std::exception_ptr& failure);
/// Whether it is a Cancelled.
[[nodiscard]] bool isCancellation(const std::exception_ptr& failure);

/// Runs `job` on the pool.
void runOnPool(std::function<void()> job);

/// Starts a task: `job(TaskContext&)` on the pool, and then `onResult(its result)` or `onFailure(exception)`
/// on the main thread. Call it on the main thread.
template <typename Job, typename OnResult, typename OnFailure>
TaskHandle startTask(QObject* receiver, Job&& job, OnResult&& onResult, OnFailure&& onFailure) {
    using Result = std::invoke_result_t<std::decay_t<Job>&, TaskContext&>;

    struct Work {
        std::decay_t<Job> job;
        std::decay_t<OnResult> onResult;
        std::decay_t<OnFailure> onFailure;
    };
    auto work = std::make_shared<std::optional<Work>>(
        Work{std::forward<Job>(job), std::forward<OnResult>(onResult), std::forward<OnFailure>(onFailure)});
    const auto mailbox = std::make_shared<TaskMailbox>(receiver);

    const auto finish = [mailbox](auto action) {
        mailbox->deliver([mailbox, action = std::move(action)]() mutable {
            mailbox->close(); // first, so that the continuation may start the next task in the same handle
            action();
        });
    };
    runOnPool([mailbox, work, finish] {
        if (mailbox->isClosed() && mailbox->stopToken().stop_requested())
            return; // unless it is to run to its end although its outcome is dropped
        TaskContext context(mailbox);
        try {
            if constexpr (std::is_void_v<Result>) {
                (*work)->job(context);
                finish([work] { (*work)->onResult(); });
            } else {
                auto result = std::make_shared<Result>((*work)->job(context));
                finish([work, result] { (*work)->onResult(std::move(*result)); });
            }
        } catch (...) {
            finish([work, failure = std::current_exception()] { (*work)->onFailure(failure); });
        }
    });
    return TaskHandle(mailbox);
}

} // namespace tallyglass
