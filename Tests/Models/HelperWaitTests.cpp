#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Models/HelperSetup.h"
#include "Tallyglass/Models/HelperWait.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tallyglass {
namespace {

using test::waitUntil;

class HelperWaitTest : public testing::Test {
protected:
    HelperWaitTest() { std::filesystem::create_directories(trigger.parent_path()); }

    /// Lets three seconds pass, and waits until it waits again or has ended.
    void tick() {
        const int starts = machine.timer->starts;
        machine.timer->fire();
        waitUntil([&] { return machine.timer->starts > starts || !wait.isWaiting(); });
    }

    const test::ScriptedMachine machine;
    test::FakeWorkspace workspace;
    Alerts alerts;
    AppModel model{machine.environment()};
    HelperSetup helper{machine.paths(), workspace, alerts, [this] { return *machine.now; }};
    HelperWait wait{model, helper};
    const std::filesystem::path trigger = machine.paths().path(HelperRemoval::triggerPath);
};

TEST_F(HelperWaitTest, asksEveryThreeSecondsUntilTheManifestIsThere) {
    wait.start();
    EXPECT_EQ(machine.timer->remaining, 3);
    EXPECT_FALSE(std::filesystem::exists(trigger));

    tick();
    waitUntil([&] { return std::filesystem::exists(trigger); });
    EXPECT_TRUE(wait.isWaiting());
    EXPECT_EQ(machine.timer->remaining, 3);

    machine.setManifest(7);
    tick();
    EXPECT_FALSE(wait.isWaiting());
    EXPECT_FALSE(machine.timer->remaining);
    ASSERT_EQ(model.manifest().size(), 1);
    EXPECT_EQ(model.manifest().front().xid, 7);
}

TEST_F(HelperWaitTest, hasNothingToWaitForOnceTheManifestIsThere) {
    model.setManifest({BackupManifestEntry{.completionDate = *machine.now}});

    wait.start();

    EXPECT_FALSE(wait.isWaiting());
    EXPECT_FALSE(machine.timer->remaining);
}

TEST_F(HelperWaitTest, stopsWhenToldTo) {
    wait.start();

    wait.stop();

    EXPECT_FALSE(wait.isWaiting());
    EXPECT_FALSE(machine.timer->remaining);
}

} // namespace
} // namespace tallyglass
