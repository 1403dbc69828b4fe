#include "Tallyglass/Screens/Dashboard/ActivityCardContent.h"
#include "Tallyglass/Screens/Dashboard/ConfigurationCardContent.h"
#include "Tallyglass/Screens/Dashboard/DestinationHeaderContent.h"
#include "Tallyglass/Screens/Dashboard/UnlockCardContent.h"
#include "TallyglassKit/Access/BackupRate.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMSettings.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

constexpr std::int64_t gigabyte = 1'000'000'000;
const Date now = dateSince1970(1'790'000'000);

TEST(DestinationHeader, tellsHowFullTheDestinationIs) {
    TMDestination destination{.id = "A", .volumeName = "Vault", .kind = TMDestination::Kind::local};
    destination.bytesUsed = 640 * gigabyte;
    destination.bytesAvailable = 360 * gigabyte;

    const DestinationHeaderContent content = destinationHeaderContent(destination, false);

    EXPECT_EQ(content.name, "Vault");
    EXPECT_EQ(content.symbol, "externaldrive.fill");
    EXPECT_EQ(content.ring.text, "64%");
    const auto tiles = destinationTiles(destination);
    EXPECT_EQ(tiles[0], (StatTileContent{"Used", "640 GB", "of 1 TB"}));
    EXPECT_EQ(tiles[1], (StatTileContent{"Free", "360 GB", ""}));
}

TEST(DestinationHeader, leavesOpenWhatIsUnknown) {
    TMDestination destination{.id = "A", .bytesUsed = 5 * gigabyte};

    const DestinationHeaderContent content = destinationHeaderContent(destination, false);

    EXPECT_FALSE(content.ring.known);
    EXPECT_EQ(destinationTiles(destination)[0].caption, "of —");
    EXPECT_EQ(destinationTiles(destination)[1].value, "—");
    EXPECT_EQ(content.url, "");
    EXPECT_FALSE(content.isEncrypted);
}

TEST(DestinationHeader, countsBackupsSinceTheFirst) {
    TMDestination destination{.id = "A"};
    EXPECT_EQ(destinationTiles(destination)[2], (StatTileContent{"Backups", "0", ""}));

    destination.snapshotDates = AscendingDates(std::vector<Date>(1200, dateSince1970(1'789'948'800)));
    EXPECT_EQ(destinationTiles(destination)[2], (StatTileContent{"Backups", "1200", "since Sep 21"}));
}

TEST(DestinationHeader, knowsANetworkDestination) {
    TMDestination destination{.id = "A",
                              .networkURL = "smb://nas.local/backups",
                              .kind = TMDestination::Kind::network,
                              .isEncrypted = true};

    const DestinationHeaderContent content = destinationHeaderContent(destination, false);

    EXPECT_EQ(content.name, "nas.local");
    EXPECT_EQ(content.symbol, "externaldrive.connected.to.line.below.fill");
    EXPECT_EQ(content.url, "smb://nas.local/backups");
    EXPECT_TRUE(content.isEncrypted);
}

TEST(ActivityCard, isTitledByThePhaseUnlessItIsStopping) {
    const auto title = [](const BackupStatus& status) { return activityCardContent(status, {}).title; };

    EXPECT_EQ(title({.isRunning = true}), "Backing up");
    EXPECT_EQ(title({.isRunning = true, .phase = "ThinningPostBackup"}), "Thinning Post Backup");
    EXPECT_EQ(title({.isRunning = true, .phase = "Copying", .isStopping = true}), "Stopping…");
}

TEST(ActivityCard, roundsThePercentage) {
    const auto at = [](double percent) {
        return activityCardContent({.isRunning = true, .percent = percent}, {});
    };

    EXPECT_EQ(at(0.374).percent, "37%");
    EXPECT_EQ(at(0.375).percent, "38%");
    EXPECT_EQ(at(0.999).percent, "100%");
    EXPECT_EQ(at(1.2).fraction, 1);
    EXPECT_FALSE(activityCardContent({.isRunning = true}, {}).hasFraction);
}

struct DetailCase {
    const char* what;
    BackupStatus status;
    std::optional<BackupRate> rate;
    const char* line;
};

class ActivityDetail : public testing::TestWithParam<DetailCase> {};

TEST_P(ActivityDetail, saysWhatIsKnown) {
    EXPECT_EQ(activityCardContent(GetParam().status, GetParam().rate).detail.toStdString(), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    , ActivityDetail,
    testing::Values(
        DetailCase{"nothing", {}, {}, "Preparing…"},
        DetailCase{
            "items", {.bytesCopied = 0, .numberOfChangedItems = 1200}, {}, "Preparing — 1,200 items found"},
        DetailCase{"noItems", {.numberOfChangedItems = 0}, {}, "Preparing…"},
        DetailCase{"bytes", {.bytesCopied = 3 * gigabyte, .numberOfChangedItems = 7}, {}, "3 GB copied"},
        DetailCase{"all",
                   {.bytesCopied = 3 * gigabyte, .timeRemaining = 4500},
                   BackupRate{12'500'000, 340.9},
                   "3 GB copied · 12.5 MB/s · 340 files/s · about 1h 15m left"},
        DetailCase{"fewFiles", {.bytesCopied = gigabyte}, BackupRate{2'000'000, 0.4}, "1 GB copied · 2 MB/s"},
        DetailCase{"noBytes",
                   {.bytesCopied = gigabyte, .timeRemaining = 20},
                   BackupRate{0, 50},
                   "1 GB copied · about 1m left"}),
    [](const auto& detail) { return detail.param.what; });

TEST(ConfigurationCard, showsTheSettings) {
    TMSettings settings{.autoBackupEnabled = true, .autoBackupInterval = 3600, .requiresACPower = true};
    settings.skipPaths = {"/Users/ann/Library/Caches", "/private/tmp"};
    const TMDestination destination{.id = "A",
                                    .consistencyScanDate = dateSince1970(1'790'000'000 - 3 * 86400)};

    const ConfigurationCardContent content = configurationCardContent(settings, &destination, now);

    EXPECT_EQ(content.rows, (QList<LabelledValue>{{"Automatic backups", "On"},
                                                  {"Interval", "1h"},
                                                  {"Requires AC power", "Yes"},
                                                  {"Last verification", "3 days ago"}}));
    EXPECT_EQ(content.skipPaths, (QStringList{"/Users/ann/Library/Caches", "/private/tmp"}));
}

TEST(ConfigurationCard, isOffWithoutSettings) {
    const ConfigurationCardContent content = configurationCardContent({}, nullptr, now);

    EXPECT_EQ(
        content.rows,
        (QList<LabelledValue>{{"Automatic backups", "Off"}, {"Interval", "—"}, {"Requires AC power", "No"}}));
    EXPECT_TRUE(content.skipPaths.isEmpty());
}

TEST(UnlockCard, standsWhileAccessIsntGranted) {
    EXPECT_FALSE(unlockCardContent(FDAStatus::granted).shown);
    EXPECT_TRUE(unlockCardContent(FDAStatus::denied).shown);
    EXPECT_EQ(unlockCardContent(FDAStatus::denied).note, "");
    EXPECT_TRUE(unlockCardContent(FDAStatus::indeterminate).shown);
    EXPECT_EQ(unlockCardContent(FDAStatus::indeterminate).note,
              "Permission state could not be determined on this system.");
}

} // namespace
} // namespace tallyglass
