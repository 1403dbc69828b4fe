// The model over a machine whose backups are real.

#include "Tallyglass/Models/AppModel.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/Models/FakeTimer.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using test::waitUntil;

class LiveBackup : public testing::Test {
protected:
    LiveBackup() {
        machine.folder().write("source/first", "first");
        machine.setUp();
        machine.backUp();
        for (const char* name : {"one", "two", "three", "four"})
            machine.folder().write(std::string("source/") + name, std::string(4'000'000, 'x'));
        limitCopying("500");
    }

    /// To so many KiB a second, so that a backup can be watched.
    void limitCopying(const std::string& limit) { machine.run({"arrange", "--copy-limit", limit}); }

    void poll() {
        const int starts = timer->starts;
        timer->fire();
        waitUntil([&] { return timer->starts > starts; });
    }

    void pollUntil(const std::function<bool()>& condition) {
        waitUntil([&] {
            poll();
            return condition();
        });
    }

    [[nodiscard]] std::size_t snapshots() const { return model.selectedDestination()->snapshotDates.size(); }

    [[nodiscard]] AppEnvironment environment() const {
        AppEnvironment result(SystemPaths(machine.root()), TMUtilRunner(machine.tool()));
        result.makeTimer = test::FakeTimer::factory(timer);
        return result;
    }

    const test::HostMachine machine;
    const std::shared_ptr<test::FakeTimer::State> timer = std::make_shared<test::FakeTimer::State>();
    AppModel model{environment()};
};

TEST_F(LiveBackup, isWatchedToItsEndOrStoppedHalfWay) {
    bool ready = false;
    model.refresh([&ready] { ready = true; });
    waitUntil([&] { return ready; });
    model.startPolling();
    const std::size_t before = snapshots();
    const std::size_t rowsBefore = model.manifest().size();

    model.startBackup();
    waitUntil([this] { return model.status().isRunning || model.lastError(); });
    pollUntil([this] { return model.status().bytesCopied.value_or(0) > 0; });
    EXPECT_EQ(model.status().phase, "Copying");
    EXPECT_EQ(timer->remaining, AppModel::runningInterval);
    model.stopBackup();
    pollUntil([this] { return !model.status().isRunning; });
    EXPECT_EQ(snapshots(), before);
    EXPECT_TRUE(model.health()->lastBackupFailed());

    limitCopying("6000");
    model.startBackup();
    waitUntil([this] { return model.status().isRunning || model.lastError(); });
    pollUntil([this] { return !model.status().isRunning; });
    EXPECT_EQ(model.lastError(), std::nullopt);
    EXPECT_EQ(snapshots(), before + 1);
    EXPECT_EQ(model.manifest().size(), rowsBefore + 1);
    EXPECT_FALSE(model.health()->lastBackupFailed());
}

} // namespace
} // namespace tallyglass
