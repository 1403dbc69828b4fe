#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Models/FixtureSession.h"
#include "Tallyglass/Screens/BackupChanges/BackupChangesContent.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/TimeZone.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tallyglass {
namespace {

using Case = BackupChangesContent::Case;
using Names = std::vector<std::string>;
using test::waitUntil;

const Date noon = dateSince1970(1'795'348'800); // 2026-11-22 12:00:00 UTC

/// Over two backups, the newer one of noon, the older one of the day before.
class ChangesContent : public testing::Test {
protected:
    ChangesContent() {
        app.setFdaStatus(FDAStatus::granted);
        setNewest(noon);
    }

    void setNewest(Date date) {
        *machine.now = date + std::chrono::hours(24);
        roots = machine.setBackups(2);
    }
    [[nodiscard]] BackupChangesContent content() const { return backupChangesContent(app, changes, noon); }
    /// Of the backup at that date.
    [[nodiscard]] BackupChangesContent loaded(Date date = noon) {
        for (const Comparison& comparison : machine.cache->open().store().allComparisons())
            machine.cache->open().store().deleteComparison(comparison.id);
        changes.load(date, 2);
        waitUntil([this] { return !changes.isBusy(); });
        return content();
    }
    [[nodiscard]] BackupChangesContent loadedWith(int files) {
        Names names;
        for (int file = 0; file < files; ++file)
            names.push_back(std::to_string(10'000 + file));
        machine.setAdded(roots[1], names);
        return loaded();
    }

    const test::TimeZone zone{"UTC"};
    const test::ScriptedMachine machine;
    std::vector<std::string> roots;
    AppModel app{machine.environment()};
    BackupChangesModel changes{machine.environment()};
};

TEST_F(ChangesContent, isTheFirstCaseThatHolds) {
    EXPECT_EQ(content().shows, Case::running) << "before the cache is open";
    EXPECT_EQ(loadedWith(1).shows, Case::results);
    machine.hold("listbackups");
    changes.load(noon, 2);
    EXPECT_EQ(content().shows, Case::running);
    machine.setBackups(2);
    EXPECT_EQ(loaded(noon - std::chrono::hours(24)).shows, Case::oldest);
    machine.fail("compare", "tmutil: gone");
    EXPECT_EQ(loaded().shows, Case::failed);
    EXPECT_EQ(content().message, "tmutil: gone");
    EXPECT_EQ(content().messageSymbol, "exclamationmark.triangle.fill");
    for (const FDAStatus status : {FDAStatus::denied, FDAStatus::indeterminate}) {
        app.setFdaStatus(status);
        EXPECT_EQ(content().shows, Case::locked);
    }
}

TEST_F(ChangesContent, namesTheTwoBackupsOnceBothAreKnown) {
    setNewest(noon - std::chrono::minutes(1));
    const Date older = noon - std::chrono::minutes(1) - std::chrono::hours(24);
    EXPECT_EQ(loaded(older).subtitle, "Nov 22, 2026 at 12:00\u202FPM");
    EXPECT_EQ(loadedWith(1).subtitle, "Nov 21, 2026 at 11:59\u202FAM → Nov 22, 2026 at 11:59\u202FAM");
}

TEST_F(ChangesContent, saysThatTheOldestBackupHasNoneBefore) {
    const auto oldest = loaded(noon - std::chrono::hours(24));
    EXPECT_EQ(oldest.message, "This is the oldest backup, so there is no earlier one to compare it against.");
    EXPECT_EQ(oldest.messageSymbol, "clock.badge.questionmark");
}

TEST_F(ChangesContent, tellsHowFarTheComparisonIs) {
    machine.hold("compare");
    changes.load(noon, 2);
    waitUntil([this] { return changes.progressText() == "Running tmutil compare…"; });
    const auto quiet = content();
    EXPECT_EQ(quiet.progress, "Running tmutil compare…");
    EXPECT_EQ(quiet.elapsed, "0:00");
    EXPECT_EQ(quiet.received, "");
    EXPECT_EQ(quiet.networkNote, "");

    app.setSettings(
        TMSettings{.destinations = {TMDestination{.id = "A", .kind = TMDestination::Kind::network}}});
    EXPECT_EQ(content().networkNote,
              "This backup is on a network destination, so comparing it reads both backups over the network. "
              "It can take several minutes — the result is cached, so opening it again is instant.");
    changes.cancel();

    BackupChangesModel running(FixtureSession::make("changes-running", noon)->environment);
    running.load(noon - std::chrono::minutes(38), 2);
    waitUntil([&] { return running.elapsed() == 75 && running.bytesReceived() > 0; });
    const auto far = backupChangesContent(app, running, noon);
    EXPECT_EQ(far.elapsed, "1:15");
    EXPECT_EQ(far.received, "3.4 MB of results received");
}

TEST_F(ChangesContent, sumsUpTheComparisonWhenTheManifestDoesntKnowTheBackup) {
    app.setManifest({{.completionDate = noon + std::chrono::seconds(301)}});
    const auto tiles = loadedWith(1'200).tiles;
    ASSERT_EQ(tiles.size(), 4);
    using Role = Theme::Role;
    EXPECT_EQ(tiles[0], (StatTileContent{"Added", "1,200", "12 KB", Role::healthy}));
    EXPECT_EQ(tiles[1], (StatTileContent{"Modified", "0", "changed", Role::accent}));
    EXPECT_EQ(tiles[2], (StatTileContent{"Removed", "0", "Zero KB", Role::critical}));
    EXPECT_EQ(tiles[3], (StatTileContent{"Net", "+12 KB", "size", Role::text}));
    EXPECT_EQ(content().summaryNote, "");
}

TEST_F(ChangesContent, givesTimeMachinesOwnTotalsWhenTheManifestKnowsTheBackup) {
    app.setManifest({{.completionDate = noon + std::chrono::seconds(300),
                      .changedCount = 12'345,
                      .changedLogicalSize = 3'000'000,
                      .changedPhysicalSize = 2'000'000}});
    const auto shown = loadedWith(1);
    ASSERT_EQ(shown.tiles.size(), 2);
    EXPECT_EQ(shown.tiles[0], (StatTileContent{"Files changed", "12,345", "this backup"}));
    EXPECT_EQ(shown.tiles[1], (StatTileContent{"On disk", "2 MB", "3 MB logical"}));
    EXPECT_EQ(
        shown.summaryNote,
        "Time Machine's own totals for this backup. The list below is a browsable diff of size and "
        "timestamp changes, pulled on demand — open a folder to fetch what's inside. It only covers the "
        "folders you've opened, so it won't add up to the total above.");

    setNewest(noon - std::chrono::seconds(1));
    EXPECT_EQ(loadedWith(1).tiles.size(), 4); // by the backup's own date it is too far
}

TEST_F(ChangesContent, saysWhenTheListIsCutShort) {
    EXPECT_EQ(loadedWith(2'000).truncation, "");
    EXPECT_EQ(content().shownCount, "2,000 shown");
    EXPECT_EQ(loadedWith(2'001).truncation,
              "Showing the first 2,000 of 2,001. Narrow the filter to see more.");
}

TEST_F(ChangesContent, tellsAnEmptyListFromNoChangesAtAll) {
    const auto none = loadedWith(0);
    EXPECT_EQ(none.message, "Nothing changed between these two backups.");
    EXPECT_EQ(none.messageSymbol, "checkmark.circle");
    EXPECT_EQ(loadedWith(1).message, "");
    machine.setTouched(roots[0], roots[1], {"a.txt"});
    EXPECT_EQ(loaded().message, "No changes match the current filters.");
}

} // namespace
} // namespace tallyglass
