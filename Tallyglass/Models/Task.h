// How a model has work done that waits: a job runs on a thread of its own pool, and what it posts and what
// comes of it arrives on the main thread, in that order, unless the receiver or the handle's interest has
// gone.
//
//     m_task = startTask(this,
//         [runner](TaskContext& task) { return runner.status(task.stopToken()); },
//         [this](BackupStatus status) { ... },
//         [this](const std::exception_ptr& failure) { ... });
//
// The job must capture values or thread-safe objects only, never the receiver.
//
// Handles and their continuations belong to the main thread. Nothing but the callers limits how many jobs
// run at the same time: each has a thread. With the application all jobs are told to stop, and their end is
// waited for.

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
/// 1. What is delivered runs on the main thread, and nothing does once the mailbox was closed.
/// 2. A mailbox outlives its open door: the job owns it until the outcome is posted, and the outcome then
/// does.
class TaskMailbox {
public:
    explicit TaskMailbox(QObject* receiver);
    TaskMailbox(const TaskMailbox&) = delete;
    TaskMailbox& operator=(const TaskMailbox&) = delete;

    void deliver(std::function<void()> action);
    /// Drops what hasn't arrived. Main thread only.
    void close();
    [[nodiscard]] bool isClosed() const;
    /// From now on the job isn't told to stop when the mailbox is closed. Main thread only.
    void letFinish() { m_stopsWhenClosed = false; }

    void stop() { m_stop.request_stop(); }
    [[nodiscard]] std::stop_token stopToken() const { return m_stop.get_token(); }
    /// Main thread only.
    [[nodiscard]] QObject* receiver() const { return m_receiver; }

private:
    class Door;

    Door* takeDoor();

    QObject* const m_receiver;
    mutable std::mutex m_mutex;
    Door* m_door; ///< null once closed
    bool m_stopsWhenClosed = true;
    std::stop_source m_stop;
    const std::stop_callback<std::function<void()>> m_applicationEnd; ///< after what it stops
};

/// What a job may ask of its task. Used on the job's thread.
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

/// Owns the interest in one task. Letting go of it stops the job and drops what it would still deliver.
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
    /// Lets the job run to its end, even when nobody is interested in its outcome any more.
    void letFinish() { m_mailbox->letFinish(); }
    /// Lets the task go on for as long as the receiver lives.
    void detach() { m_mailbox.reset(); }
    /// From the start until the outcome has arrived or was dropped.
    [[nodiscard]] bool isActive() const { return m_mailbox && !m_mailbox->isClosed(); }

private:
    std::shared_ptr<TaskMailbox> m_mailbox;
};

/// The words for a failure: an Error's description, or what() of any other exception.
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
            return; // for an unheard job may be one that is to run to its end
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
