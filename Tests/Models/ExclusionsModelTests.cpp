#include "Tallyglass/Models/ExclusionsModel.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace tallyglass {
namespace {

namespace fs = std::filesystem;
using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class ExclusionsModelTest : public testing::Test {
protected:
    void settle() {
        waitUntil([this] { return !model->isBusy(); });
    }
    void watch(const std::vector<std::string>& paths) const {
        defaults.setStringArray(ExclusionsModel::watchedPathsKey, paths);
    }
    [[nodiscard]] std::vector<std::string> watched() const {
        return defaults.stringArray(ExclusionsModel::watchedPathsKey)
            .value_or(std::vector<std::string>{"none"});
    }
    [[nodiscard]] auto runsOf(const char* verb) const {
        const auto calls = machine.calls();
        return std::ranges::count(calls, verb);
    }
    [[nodiscard]] std::vector<std::string> listed() const {
        std::vector<std::string> paths;
        for (const auto& status : model->statuses())
            paths.push_back(status.path);
        return paths;
    }

    const test::ScriptedMachine machine;
    const UserDefaults defaults{machine.defaultsFile()};
    std::unique_ptr<ExclusionsModel> model = std::make_unique<ExclusionsModel>(machine.environment());
};

TEST_F(ExclusionsModelTest, hasNothingToAskAboutAtFirst) {
    EXPECT_FALSE(model->isLoaded());
    model->refresh();
    EXPECT_TRUE(model->isBusy());
    settle();
    EXPECT_TRUE(model->isLoaded());
    EXPECT_THAT(model->statuses(), IsEmpty());
    EXPECT_THAT(model->skipPaths(), IsEmpty());
    EXPECT_THAT(machine.calls(), IsEmpty());
}

TEST_F(ExclusionsModelTest, readsTheListAndTheRulesAnewAtEachRefresh) {
    machine.folder().write("Library/Preferences/com.apple.TimeMachine.plist",
                           "<plist><dict><key>AutoBackup</key><true/><key>SkipPaths</key><array>"
                           "<string>/skipped</string></array></dict></plist>");
    watch({"/b", "/skipped/a", "/gone"});
    machine.answer("isexcluded", "[Included] /b\n[Excluded] /skipped/a\n");

    model->refresh();
    settle();
    EXPECT_THAT(model->skipPaths(), ElementsAre("/skipped"));
    EXPECT_THAT(model->statuses(), ElementsAre(ExclusionStatus{"/b", ExclusionState::included, {}},
                                               ExclusionStatus{"/skipped/a", ExclusionState::excluded,
                                                               ExclusionReason::systemSkipPath},
                                               ExclusionStatus{"/gone", ExclusionState::unknown, {}}));

    fs::remove(machine.folder() / "Library/Preferences/com.apple.TimeMachine.plist");
    watch({"/b"});
    model->refresh();
    settle();
    EXPECT_THAT(model->skipPaths(), IsEmpty());
    EXPECT_THAT(listed(), ElementsAre("/b"));
}

TEST_F(ExclusionsModelTest, addsEachItemOnceAndSortsTheList) {
    watch({"/z", "/c"});
    model->addPaths({"/b/", "/c", "/a", "/b"});
    EXPECT_TRUE(model->isBusy());
    settle();
    EXPECT_THAT(watched(), ElementsAre("/a", "/b", "/c", "/z"));
    EXPECT_EQ(listed(), watched());
}

TEST_F(ExclusionsModelTest, stopsTrackingWithoutChangingTheExclusion) {
    watch({"/c", "/a", "/b", "/a"});
    model->stopTracking("/a");
    settle();
    EXPECT_THAT(watched(), ElementsAre("/c", "/b"));
    EXPECT_THAT(machine.calls(), ElementsAre("isexcluded"));
}

TEST_F(ExclusionsModelTest, losesNoChangeOfTheListWhenCallsOverlap) {
    machine.delay("0.2");
    for (int index = 0; index < 50; ++index)
        model->addPaths({"/" + std::to_string(index)});
    model->stopTracking("/7");
    model->addPaths({"/7", "/new"});
    model->stopTracking("/8");
    settle();
    EXPECT_THAT(watched(), testing::SizeIs(50));
    EXPECT_THAT(watched(), testing::AllOf(testing::Contains("/7"), testing::Contains("/new"),
                                          testing::Not(testing::Contains("/8"))));
    EXPECT_EQ(listed(), watched());
}

TEST_F(ExclusionsModelTest, savesTheListThoughTheToolIsSlowAndTheModelGoes) {
    watch({"/a"});
    machine.hold("isexcluded");
    model->refresh();
    waitUntil([this] { return runsOf("isexcluded") == 1; });
    model->addPaths({"/b"});
    model.reset();
    waitUntil([this] { return watched().size() == 2; });
    EXPECT_THAT(watched(), ElementsAre("/a", "/b"));
    waitUntil([] { return test::ProcessResources::now().children == 0; });
}

TEST_F(ExclusionsModelTest, tellsOfAChangeUntilTheStatusesShowIt) {
    watch({"/a"});
    machine.answer("isexcluded", "[Included] /a\n");
    model->refresh();
    settle();
    machine.hold("addexclusion");

    model->setExcluded(true, "/a");
    EXPECT_TRUE(model->isBusy());
    EXPECT_THAT(model->pendingExclusion("/a"), Optional(true));
    EXPECT_FALSE(model->pendingExclusion("/b"));
    waitUntil([this] { return runsOf("addexclusion") == 1; });
    machine.answer("isexcluded", "[Excluded] /a\n");
    machine.answer("addexclusion", "");
    waitUntil([this] { return !model->pendingExclusion("/a"); });
    EXPECT_EQ(model->statuses().front().state, ExclusionState::excluded);
    EXPECT_FALSE(model->isBusy());
    EXPECT_FALSE(model->error());

    model->setExcluded(false, "/a");
    EXPECT_THAT(model->pendingExclusion("/a"), Optional(false));
    settle();
    EXPECT_EQ(runsOf("removeexclusion"), 1);
}

TEST_F(ExclusionsModelTest, makesOverlappingChangesInTheirOrder) {
    machine.delay("0.1");
    model->setExcluded(true, "/a");
    model->setExcluded(false, "/a");
    model->setExcluded(true, "/b");
    EXPECT_THAT(model->pendingExclusion("/a"), Optional(false));
    settle();
    std::vector<std::string> changes = machine.calls();
    std::erase(changes, "isexcluded");
    EXPECT_THAT(changes, ElementsAre("addexclusion", "removeexclusion", "addexclusion"));
}

TEST_F(ExclusionsModelTest, saysWhyAChangeFailedUntilTheNextOne) {
    watch({"/a"});
    machine.answer("isexcluded", "[Included] /a\n");
    model->refresh();
    settle();
    machine.fail("addexclusion", "/a: Error (-5000) while attempting to change exclusion setting.\n");

    model->setExcluded(true, "/a");
    settle();
    EXPECT_EQ(model->error(), "/a: Error (-5000) while attempting to change exclusion setting.");
    EXPECT_EQ(model->failedPath(), "/a");
    EXPECT_EQ(model->statuses().front().state, ExclusionState::included);
    EXPECT_EQ(runsOf("isexcluded"), 1) << "nothing has changed";
    model->refresh();
    settle();
    EXPECT_TRUE(model->error());

    model->setExcluded(false, "/a");
    EXPECT_FALSE(model->error());
    EXPECT_FALSE(model->failedPath());
    settle();
}

TEST_F(ExclusionsModelTest, saysThatTheListCannotBeSavedUntilItCan) {
    machine.folder().write("data/Tallyglass", "a file where the folder should be");
    model->addPaths({"/a"});
    settle();
    EXPECT_TRUE(model->error());
    EXPECT_FALSE(model->failedPath());
    EXPECT_THAT(model->statuses(), IsEmpty());

    fs::remove(machine.folder() / "data/Tallyglass");
    model->addPaths({"/b"});
    settle();
    EXPECT_FALSE(model->error());
    EXPECT_THAT(listed(), ElementsAre("/b"));
}

TEST_F(ExclusionsModelTest, survivesAToolThatIsMissing) {
    watch({"/a"});
    fs::remove(machine.folder() / "usr/bin/tmutil");
    model->refresh();
    settle();
    EXPECT_THAT(model->statuses(), ElementsAre(ExclusionStatus{"/a", ExclusionState::unknown, {}}));
    model->setExcluded(true, "/a");
    settle();
    ASSERT_TRUE(model->error());
    EXPECT_TRUE(model->error()->starts_with("Could not run tmutil: ")) << *model->error();
}

TEST(LiveExclusions, excludeAndIncludeARealItem) {
    const test::HostMachine machine;
    const std::string item = machine.folder().write("source/notes.txt", "text");
    machine.setUp();
    AppEnvironment environment(SystemPaths(machine.root()), TMUtilRunner(machine.tool()));
    environment.defaults = UserDefaults(machine.folder() / "defaults.json");
    ExclusionsModel model(environment);
    const auto settle = [&] { waitUntil([&] { return !model.isBusy(); }); };
    model.addPaths({item});
    settle();
    EXPECT_THAT(model.statuses(), ElementsAre(ExclusionStatus{item, ExclusionState::included, {}}));

    model.setExcluded(true, item);
    settle();
    EXPECT_THAT(model.statuses(),
                ElementsAre(ExclusionStatus{item, ExclusionState::excluded, ExclusionReason::ownMarker}))
        << model.error().value_or("");
    machine.backUp();
    EXPECT_FALSE(fs::exists(machine.inBackup(machine.backups().back()) / "notes.txt"));

    model.setExcluded(false, item);
    settle();
    EXPECT_THAT(model.statuses(), ElementsAre(ExclusionStatus{item, ExclusionState::included, {}}));

    fs::remove(item);
    model.refresh();
    settle();
    EXPECT_THAT(model.statuses(), ElementsAre(ExclusionStatus{item, ExclusionState::unknown, {}}));
    model.setExcluded(true, item);
    settle();
    EXPECT_EQ(model.error(), item + ": Error (-43) while attempting to change exclusion setting.");
}

} // namespace
} // namespace tallyglass
