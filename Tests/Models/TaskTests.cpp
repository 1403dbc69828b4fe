#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <condition_variable>
#include <latch>
#include <vector>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::ElementsAre;

/// A receiver that takes down what reaches it, and on which thread.
class Listener : public QObject {
public:
    void hear(const std::string& word) {
        EXPECT_EQ(QThread::currentThread(), thread());
        heard.push_back(word);
    }

    template <typename Job>
    TaskHandle start(Job job) {
        return startTask(
            this, std::move(job), [this](const std::string& result) { hear("result " + result); },
            [this](const std::exception_ptr& failure) { hear("failure " + describe(failure)); });
    }

    std::vector<std::string> heard;
};

/// A job that waits until it is told to stop.
std::string waitForStop(TaskContext& task) {
    std::mutex mutex;
    std::condition_variable_any condition;
    std::unique_lock lock(mutex);
    condition.wait(lock, task.stopToken(), [] { return false; });
    throw Cancelled();
}

TEST(Task, deliversWhatItPostsAndThenItsOutcomeOnTheMainThread) {
    Listener listener;
    QThread* worker = nullptr;

    const auto handle = listener.start([&worker](TaskContext& task) {
        worker = QThread::currentThread();
        const auto post = task.post(&Listener::hear);
        post("one");
        post("two");
        return std::string("three");
    });
    const bool wasActive = handle.isActive();
    waitUntil([&] { return !handle.isActive(); });

    EXPECT_TRUE(wasActive);
    EXPECT_NE(worker, QThread::currentThread());
    EXPECT_THAT(listener.heard, ElementsAre("one", "two", "result three"));
}

TEST(Task, deliversAFailureWithItsWords) {
    Listener listener;
    const auto handle =
        listener.start([](TaskContext&) -> std::string { throw Error(std::string("no\0disk", 7)); });
    waitUntil([&] { return !handle.isActive(); });
    EXPECT_THAT(listener.heard, ElementsAre("failure no\uFFFDdisk"));
}

TEST(Task, thatIsStoppedStillDeliversItsEnd) {
    Listener listener;
    bool cancelled = false;
    auto handle = startTask(
        &listener, waitForStop, [](const std::string&) { FAIL(); },
        [&](const std::exception_ptr& failure) { cancelled = isCancellation(failure); });
    handle.stop();
    waitUntil([&] { return !handle.isActive(); });
    EXPECT_TRUE(cancelled);
}

TEST(Task, thatIsReplacedStopsAndDropsWhatItWouldDeliver) {
    Listener listener;
    std::latch firstStarted(1);
    std::atomic<bool> firstEnded = false;
    auto handle = listener.start([&](TaskContext& task) -> std::string {
        firstStarted.count_down();
        task.post (&Listener::hear)("dropped, since nobody has taken it in yet");
        try {
            return waitForStop(task);
        } catch (...) {
            firstEnded = true;
            throw;
        }
    });
    firstStarted.wait();
    handle = listener.start([](TaskContext&) { return std::string("second"); });
    waitUntil([&] { return !handle.isActive() && firstEnded; });
    EXPECT_THAT(listener.heard, ElementsAre("result second"));
}

TEST(Task, endsWithItsReceiver) {
    auto listener = std::make_unique<Listener>();
    std::latch started(1);
    std::atomic<bool> ended = false;
    TaskHandle handle = listener->start([&](TaskContext& task) -> std::string {
        started.count_down();
        const auto post = task.post(&Listener::hear);
        try {
            return waitForStop(task);
        } catch (...) {
            post("to nobody");
            ended = true;
            throw;
        }
    });
    started.wait();
    listener.reset();
    EXPECT_FALSE(handle.isActive());
    waitUntil([&] { return ended.load(); });
}

TEST(Task, mayBeFollowedByTheNextOneInTheSameHandle) {
    QObject receiver;
    TaskHandle handle;
    int runs = 0;
    std::function<void()> startNext = [&] {
        handle = startTask(
            &receiver, [](TaskContext&) {},
            [&] {
                if (++runs < 3)
                    startNext();
            },
            [](const std::exception_ptr&) { FAIL(); });
    };
    startNext();
    waitUntil([&] { return runs == 3 && !handle.isActive(); });
}

TEST(Task, letsAnyNumberOfJobsWaitForEachOther) {
    constexpr int count = 200;
    Listener listener;
    std::latch together(count);
    std::vector<TaskHandle> handles;
    for (int i = 0; i < count; ++i)
        handles.push_back(listener.start([&together](TaskContext&) {
            together.arrive_and_wait(); // passes only when all of them run
            return std::string("passed");
        }));
    waitUntil([&] { return listener.heard.size() == count; });
}

TEST(Task, runsToItsEndUnheardIfThatIsWanted) {
    constexpr int count = 100; // some of which haven't begun when their receiver goes
    std::latch mayEnd(1);
    std::atomic<int> unstopped = 0;
    for (int i = 0; i < count; ++i) {
        Listener listener;
        auto handle = listener.start([&](TaskContext& task) {
            mayEnd.wait();
            unstopped += task.stopToken().stop_requested() ? 0 : 1;
            return std::string();
        });
        handle.letFinish();
    }
    mayEnd.count_down();
    waitUntil([&] { return unstopped == count; });
}

TEST(TaskDeathTest, isStoppedWithTheApplicationAtTheLatest) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto endApplication = [] {
        std::latch begun(1);
        auto listener = std::make_unique<Listener>();
        auto handle = listener->start([&begun](TaskContext& task) -> std::string {
            begun.count_down();
            try {
                return waitForStop(task);
            } catch (const Cancelled&) {
                std::fputs("was stopped\n", stderr);
                throw;
            }
        });
        handle.letFinish();
        begun.wait();
        listener.reset();
        qApp->~QCoreApplication(); // as at the end of main
        std::_Exit(0);
    };

    EXPECT_EXIT(endApplication(), testing::ExitedWithCode(0), "was stopped");
}

} // namespace
} // namespace tallyglass
