#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/ComparisonJob.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "Tests/Support/Models/FakeTimer.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace tallyglass {
namespace {

using test::waitUntil;

class Job : public testing::Test {
protected:
    /// A tmutil that prints one change, once it may.
    [[nodiscard]] static TMUtilResult run(const std::atomic<bool>& isHeld, const std::stop_token& stop) {
        while (isHeld && !stop.stop_requested())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (stop.stop_requested())
            throw Cancelled();
        return {.exitCode = 0,
                .stdout = std::string("<plist><dict><key>Changes</key><array><dict><key>AddedItem</key><dict>"
                                      "<key>Path</key><string>/new/Data/a</string><key>Size</key>"
                                      "<integer>1</integer></dict></dict></array></dict></plist>"),
                .stderr = {}};
    }
    [[nodiscard]] AppEnvironment environment() {
        AppEnvironment result(SystemPaths(folder.path()),
                              TMUtilRunner([isHeld = isHeld](const auto&, auto, const auto&, auto stop) {
                                  return run(*isHeld, stop);
                              }));
        result.cache = std::make_shared<CacheSession>(result.runner, folder / "cache.sqlite");
        result.makeTimer = test::FakeTimer::factory(timer);
        return result;
    }
    void start() { job.start("/old", "/new", CompareOptions::fast(2), true); }
    void untilEnd() {
        waitUntil([this] { return !job.isRunning(); });
    }

    const test::TemporaryFolder folder;
    const std::shared_ptr<test::FakeTimer::State> timer = std::make_shared<test::FakeTimer::State>();
    const std::shared_ptr<std::atomic<bool>> isHeld = std::make_shared<std::atomic<bool>>(false);
    ComparisonJob job{environment()};
};

TEST_F(Job, countsTheTimeFromWhereItBegan) {
    job.begin("Looking around…");
    EXPECT_EQ(job.progressText(), "Looking around…");
    for (int second = 0; second < 75; ++second)
        timer->fire();
    start();
    EXPECT_EQ(job.progressText(), "Comparing…");
    timer->fire();
    untilEnd();
    EXPECT_EQ(job.elapsedText(), "1:16");
    EXPECT_FALSE(timer->remaining);

    start();
    EXPECT_EQ(job.elapsed(), 0);
    untilEnd();
}

TEST_F(Job, tellsOfAnEqualResultOnlyThatItSucceeded) {
    QSignalSpy changed(&job, &ComparisonJob::resultChanged);
    QSignalSpy succeeded(&job, &ComparisonJob::succeeded);
    for (int runs = 0; runs < 2; ++runs) {
        start();
        untilEnd();
    }
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(succeeded.size(), 2);
    EXPECT_EQ(job.rows().size(), 1u);
}

TEST_F(Job, isOverAtOnceWhenItIsAbandonedAndLaterWhenItIsCancelled) {
    job.begin("Looking around…");
    job.abandon();
    EXPECT_FALSE(job.isRunning());
    EXPECT_FALSE(job.error());

    *isHeld = true;
    start();
    job.abandon();
    EXPECT_FALSE(job.isRunning());
    EXPECT_EQ(job.error(), "Comparison cancelled.");

    start();
    EXPECT_FALSE(job.error());
    job.cancel();
    EXPECT_TRUE(job.isRunning());
    untilEnd();
    EXPECT_EQ(job.error(), "Comparison cancelled.");
    EXPECT_FALSE(job.comparison());
}

} // namespace
} // namespace tallyglass
