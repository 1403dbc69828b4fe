#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Screens/BackupChanges/BackupChangesContent.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TimeZone.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using Case = BackupChangesContent::Case;
using Shown = BackupChangesModel::Shown;

constexpr double noon = 1'795'348'800; // 2026-11-22 12:00:00 UTC

class ChangesContent : public testing::Test {
protected:
    ChangesContent() { app.setFdaStatus(FDAStatus::granted); }

    [[nodiscard]] BackupChangesContent content(const Shown& shown) {
        changes.show(shown);
        return backupChangesContent(app, changes, dateSince1970(noon));
    }
    /// The results of a comparison with so many added files.
    [[nodiscard]] static Shown results(int count, ChangeKind kind = ChangeKind::added) {
        Shown shown{.comparison = Comparison()};
        for (int file = 0; file < count; ++file)
            shown.changes.emplace_back(std::nullopt, SharedText("c"), fmt::format("/{}", 10'000 + file), kind,
                                       false, 1'000, 1'000, std::vector<std::string>{"mtime"});
        for (const ChangeRecord& change : shown.changes)
            shown.comparison->count(change);
        return shown;
    }

    const test::TimeZone zone{"UTC"};
    test::TemporaryFolder folder;
    AppModel app{AppEnvironment(SystemPaths(folder.path()))};
    BackupChangesModel changes{app.environment()};
};

TEST_F(ChangesContent, isTheFirstCaseThatHolds) {
    Shown shown = results(1);
    EXPECT_EQ(content(shown).shows, Case::results);
    shown.progressText = "Comparing…";
    EXPECT_EQ(content(shown).shows, Case::running);
    shown.isOldest = true;
    EXPECT_EQ(content(shown).shows, Case::oldest);
    shown.error = "tmutil: gone";
    EXPECT_EQ(content(shown).shows, Case::failed);
    EXPECT_EQ(content(shown).message, "tmutil: gone");
    EXPECT_EQ(content(shown).messageSymbol, "exclamationmark.triangle.fill");
    for (const FDAStatus status : {FDAStatus::denied, FDAStatus::indeterminate}) {
        app.setFdaStatus(status);
        EXPECT_EQ(content(shown).shows, Case::locked);
    }
}

TEST_F(ChangesContent, namesTheTwoBackupsOnceBothAreKnown) {
    Shown shown{.resolvedTo = dateSince1970(noon - 60)};
    EXPECT_EQ(content(shown).subtitle, "Nov 22, 2026 at 12:00\u202FPM");
    shown.resolvedFrom = dateSince1970(noon - 86'400);
    EXPECT_EQ(content(shown).subtitle, "Nov 21, 2026 at 12:00\u202FPM → Nov 22, 2026 at 11:59\u202FAM");
}

TEST_F(ChangesContent, saysThatTheOldestBackupHasNoneBefore) {
    const auto oldest = content({.isOldest = true});
    EXPECT_EQ(oldest.message, "This is the oldest backup, so there is no earlier one to compare it against.");
    EXPECT_EQ(oldest.messageSymbol, "clock.badge.questionmark");
}

TEST_F(ChangesContent, tellsHowFarTheComparisonIs) {
    Shown shown{.progressText = "Running tmutil compare…", .elapsed = 75};
    const auto quiet = content(shown);
    EXPECT_EQ(quiet.progress, "Running tmutil compare…");
    EXPECT_EQ(quiet.elapsed, "1:15");
    EXPECT_EQ(quiet.received, "");
    EXPECT_EQ(quiet.networkNote, "");

    shown.bytesReceived = 1;
    EXPECT_EQ(content(shown).received, "1 byte of results received");
    app.setSettings(
        TMSettings{.destinations = {TMDestination{.id = "A", .kind = TMDestination::Kind::network}}});
    EXPECT_EQ(content(shown).networkNote,
              "This backup is on a network destination, so comparing it reads both backups over the network. "
              "It can take several minutes — the result is cached, so opening it again is instant.");
}

TEST_F(ChangesContent, sumsUpTheComparisonWhenTheManifestDoesntKnowTheBackup) {
    app.setManifest({{.completionDate = dateSince1970(noon + 301)}});
    const auto tiles = content(results(1'200)).tiles;
    ASSERT_EQ(tiles.size(), 4);
    using Role = Theme::Role;
    EXPECT_EQ(tiles[0], (StatTileContent{"Added", "1,200", "1.2 MB", Role::healthy}));
    EXPECT_EQ(tiles[1], (StatTileContent{"Modified", "0", "changed", Role::accent}));
    EXPECT_EQ(tiles[2], (StatTileContent{"Removed", "0", "Zero KB", Role::critical}));
    EXPECT_EQ(tiles[3], (StatTileContent{"Net", "+1.2 MB", "size", Role::text}));
    EXPECT_EQ(content(results(1)).summaryNote, "");
}

TEST_F(ChangesContent, givesTimeMachinesOwnTotalsWhenTheManifestKnowsTheBackup) {
    app.setManifest({{.completionDate = dateSince1970(noon + 300),
                      .changedCount = 12'345,
                      .changedLogicalSize = 3'000'000,
                      .changedPhysicalSize = 2'000'000}});
    const auto shown = content(results(1)); // the later backup isn't known: the point that was picked counts
    ASSERT_EQ(shown.tiles.size(), 2);
    EXPECT_EQ(shown.tiles[0], (StatTileContent{"Files changed", "12,345", "this backup"}));
    EXPECT_EQ(shown.tiles[1], (StatTileContent{"On disk", "2 MB", "3 MB logical"}));
    EXPECT_EQ(
        shown.summaryNote,
        "Time Machine's own totals for this backup. The list below is a browsable diff of size and "
        "timestamp changes, pulled on demand — open a folder to fetch what's inside. It only covers the "
        "folders you've opened, so it won't add up to the total above.");

    Shown other = results(1);
    other.resolvedTo = dateSince1970(noon - 1);
    EXPECT_EQ(content(other).tiles.size(), 4); // by the later backup's own date it is too far
}

TEST_F(ChangesContent, saysWhenTheListIsCutShort) {
    EXPECT_EQ(content(results(2'000)).truncation, "");
    EXPECT_EQ(content(results(2'000)).shownCount, "2,000 shown");
    EXPECT_EQ(content(results(2'001)).truncation,
              "Showing the first 2,000 of 2,001. Narrow the filter to see more.");
}

TEST_F(ChangesContent, tellsAnEmptyListFromNoChangesAtAll) {
    const auto none = content(results(0));
    EXPECT_EQ(none.message, "Nothing changed between these two backups.");
    EXPECT_EQ(none.messageSymbol, "checkmark.circle");
    EXPECT_EQ(content(results(1)).message, "");
    EXPECT_EQ(content(results(1, ChangeKind::modified)).message, "No changes match the current filters.");
}

} // namespace
} // namespace tallyglass
