// The access layer as a whole, on a machine with real backups.

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace tallyglass {
namespace {

TEST(SampleMachineAccess, reportsTheSameBackupsThroughEveryInterface) {
    const test::TemporaryFolder folder;
    const auto root = folder / "machine";
    (void)TMUtilRunner(test::program("sample-machine"))
        .run({root.string(), "--backups", "4", "--files", "20", "--now", "2026-11-22T19:38:00Z"});
    const SystemPaths paths(root);
    const TMUtilRunner runner(paths.path(TMUtilRunner::executablePath));

    const auto roots = runner.backupPathsThrowing();
    const auto manifest = ManifestReader(runner, paths).read();
    const auto settings = TimeMachinePreferences().read(paths);

    ASSERT_TRUE(settings);
    ASSERT_EQ(settings->destinations.size(), 1);
    const TMDestination& destination = settings->destinations[0];
    ASSERT_EQ(roots.size(), 4);
    ASSERT_EQ(manifest.size(), 4);
    ASSERT_EQ(destination.snapshotDates.size(), 4);
    EXPECT_TRUE(std::ranges::is_sorted(roots, {}, BackupPath::timestampOfRoot));
    for (std::size_t i = 0; i < 4; ++i) {
        const auto date = BackupPath::timestampOfRoot(roots[i]);
        ASSERT_TRUE(date) << roots[i];
        EXPECT_EQ(roots[i],
                  paths.path(BackupPath::reconstructRoot(destination.destinationUUID.value(), *date)));
        EXPECT_EQ(i, NearestMatch::index(*date, manifest, NearestMatch::backupTolerance,
                                         &BackupManifestEntry::completionDate));
        EXPECT_EQ(i, NearestMatch::index(*date, destination.snapshotDates, NearestMatch::backupTolerance,
                                         std::identity()));
        EXPECT_EQ(manifest[i].isInitialBackup, i == 0);
    }
    EXPECT_GT(manifest[0].changedLogicalSize, 0);
    EXPECT_GT(destination.totalBytes().value_or(0), 0);
    EXPECT_EQ(runner.status(), BackupStatus::idle);
    EXPECT_EQ(FullDiskAccessProbe::probe(paths), FDAStatus::granted);
}

} // namespace
} // namespace tallyglass
