#include "TallyglassKit/Insight/ExclusionManager.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "Tests/Access/FakeRunner.h"
#include "Tests/Support/SampleMachine.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tallyglass::test {
namespace {

using State = ExclusionState;
using Reason = ExclusionReason;
using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

std::vector<State> statesOf(const std::string& output, const Paths& paths) {
    std::vector<State> states;
    for (const auto& status : ExclusionManager(FakeRunner(output)).status(paths, {}))
        states.push_back(status.state);
    return states;
}

TEST(ExclusionManager, readsTheStateOfEachPathInOneRun) {
    const FakeRunner runner(
        "[Included]    /a\n\n[Excluded] /b c\n[Unknown]   /d\nno bracket /e\n[Excluded]/a\n");
    const Paths paths = {"/d", "/b c", "/a", "/e"};

    const auto statuses = ExclusionManager(runner).status(paths, {});

    ASSERT_EQ(statuses.size(), 4U);
    EXPECT_EQ(statuses[0], (ExclusionStatus{.path = "/d", .state = State::unknown}));
    EXPECT_EQ(statuses[1], (ExclusionStatus{"/b c", State::excluded, Reason::inherited}));
    EXPECT_EQ(statuses[2].state, State::excluded); // the later line counts
    EXPECT_EQ(statuses[3].state, State::unknown);
    EXPECT_THAT(runner.calls(), ElementsAre(ElementsAre("isexcluded", "/d", "/b c", "/a", "/e")));
}

TEST(ExclusionManager, matchesThePathsAsTheToolPrintsThem) {
    EXPECT_THAT(statesOf("[Included]      / a ]b \n", {"/ a ]b ", "/ a ]b"}),
                ElementsAre(State::included, State::unknown));
    EXPECT_THAT(statesOf("[Included] /cafe\u0301", {"/caf\u00E9"}), ElementsAre(State::included));
    EXPECT_THAT(statesOf("[Included] /cafe\u0301\n[Excluded] /caf\u00E9", {"/caf\u00E9", "/cafe\u0301"}),
                ElementsAre(State::excluded, State::included));
    EXPECT_THAT(statesOf("[Excluded] /\xFF", {"/\xFF"}), ElementsAre(State::excluded));
}

TEST(ExclusionManager, knowsNothingWithoutAnAnswer) {
    const Paths paths = {"/a"};

    EXPECT_EQ(ExclusionManager(TMUtilRunner("/nowhere")).status(paths, {})[0].state, State::unknown);
    EXPECT_EQ(ExclusionManager(FakeRunner(1, "broken")).status(paths, {})[0].state, State::unknown);
    const FakeRunner unused("");
    EXPECT_THAT(ExclusionManager(unused).status({}, paths), IsEmpty());
    EXPECT_THAT(unused.calls(), IsEmpty());
}

TEST(ExclusionManager, asksTheSkipPathsBeforeTheMarker) {
    const TemporaryFolder folder;
    const auto marked = folder.write("marked", "").string();
    const auto below = folder.write("skipped/below", "").string();
    const auto beside = folder.write("skipped2", "").string();
    for (const auto& path : {marked, below})
        setExtendedAttribute(path, ExclusionManager::excludeAttribute, "");
    const Paths paths = {marked, below, folder / "skipped", beside};
    const Paths skipPaths = {"/other", folder / "skipped"};
    std::string output;
    for (const auto& path : paths)
        output += "[Excluded]    " + path + "\n";

    std::vector<std::optional<Reason>> reasons;
    for (const auto& status : ExclusionManager(FakeRunner(output)).status(paths, skipPaths))
        reasons.push_back(status.reason);

    EXPECT_THAT(reasons, ElementsAre(Reason::ownMarker, Reason::systemSkipPath, Reason::systemSkipPath,
                                     Reason::inherited));
}

TEST(ExclusionManager, seesTheMarkerOfALinkOnlyOnTheLink) {
    const TemporaryFolder folder;
    const auto marked = folder.write("marked", "").string();
    setExtendedAttribute(marked, ExclusionManager::excludeAttribute, "value");
    std::filesystem::create_symlink(marked, folder / "link");

    EXPECT_TRUE(ExclusionManager::hasOwnMarker(marked));
    EXPECT_FALSE(ExclusionManager::hasOwnMarker(folder / "link"));
    EXPECT_FALSE(ExclusionManager::hasOwnMarker(folder / "missing"));
}

TEST(ExclusionManager, switchesTheMarkerOfAnItemOnAMachine) {
    const SampleMachine machine({"--backups", "2", "--files", "10"});
    const ExclusionManager manager{TMUtilRunner(machine.tool())};
    const Paths paths = {machine.home() / "Documents", machine.home() / "missing"};
    const auto status = [&] { return manager.status(paths, {}); };

    EXPECT_EQ(status()[0].state, State::included);
    EXPECT_EQ(status()[1].state, State::unknown);
    manager.exclude(paths[0]);
    EXPECT_EQ(status()[0], (ExclusionStatus{paths[0], State::excluded, Reason::ownMarker}));
    manager.include(paths[0]);
    EXPECT_EQ(status()[0].state, State::included);
    EXPECT_THROW(manager.exclude(paths[1]), TMUtilError);
}

TEST(ExclusionStatus, tellsWhetherItCanBeSwitchedAndWhy) {
    const auto of = [](State state, std::optional<Reason> reason = {}) {
        return ExclusionStatus{"/a", state, reason};
    };
    EXPECT_TRUE(of(State::included).canToggle());
    EXPECT_TRUE(of(State::excluded).canToggle());
    EXPECT_TRUE(of(State::excluded, Reason::ownMarker).canToggle());
    EXPECT_FALSE(of(State::excluded, Reason::inherited).canToggle());
    EXPECT_FALSE(of(State::excluded, Reason::systemSkipPath).canToggle());
    EXPECT_FALSE(of(State::unknown).canToggle());

    EXPECT_EQ(of(State::included, Reason::inherited).explanation(), "Included in backups.");
    EXPECT_EQ(of(State::unknown).explanation(), "This item no longer exists.");
    EXPECT_EQ(of(State::excluded).explanation(), "Excluded");
    EXPECT_EQ(of(State::excluded, Reason::ownMarker).explanation(),
              "Excluded — this item is marked directly.");
    EXPECT_EQ(fromRawValue<State>("excluded"), State::excluded);
    EXPECT_EQ(fromRawValue<State>("Excluded"), std::nullopt);
}

} // namespace
} // namespace tallyglass::test
