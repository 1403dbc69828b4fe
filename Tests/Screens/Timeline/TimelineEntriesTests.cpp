#include "Tallyglass/Screens/Timeline/TimelineEntries.h"
#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Date at(double seconds) {
    return dateSince1970(1'790'000'000 + seconds);
}

/// Snapshots every hour, with an initial backup among the manifest's rows.
struct History {
    TMDestination destination{.id = "A", .snapshotDates = {at(0), at(3600), at(7200)}};
    BackupHealth health;
    std::vector<BackupManifestEntry> manifest{
        {.completionDate = at(0), .changedCount = 900, .changedPhysicalSize = 5000, .isInitialBackup = true},
        {.completionDate = at(3600), .changedCount = 7, .changedPhysicalSize = 300}};

    [[nodiscard]] std::vector<TimelineEntry> entries() const {
        return timelineEntries(destination, health, manifest);
    }
};

TEST(TimelineEntries, areNoneWithoutASnapshot) {
    History history;
    history.destination.snapshotDates = {};
    history.health.suspectedFailedAttempts = {at(1), at(2), at(3), at(4), at(5)};

    EXPECT_THAT(history.entries(), IsEmpty());
}

TEST(TimelineEntries, giveFailuresTheirOwnPositions) {
    History history;
    history.health.suspectedFailedAttempts = {at(5000), at(9000)};

    const auto entries = history.entries();

    ASSERT_EQ(entries.size(), 5U);
    EXPECT_TRUE(entries[2].isFailure && entries[4].isFailure);
    EXPECT_EQ(entries[2].date, at(5000));
    EXPECT_EQ(entries[2].intervalHours, std::nullopt);
    EXPECT_THAT(selectableIndices(entries), ElementsAre(0, 1, 3));
    EXPECT_EQ(entries[0].intervalHours, std::nullopt);
    EXPECT_EQ(entries[3].intervalHours, 1);
}

TEST(TimelineEntries, takeTheManifestsRowWithinFiveMinutes) {
    History history;
    history.manifest = {{.completionDate = at(299)}, {.completionDate = at(3600 - 301)}};

    const auto entries = history.entries();

    EXPECT_EQ(entries[0].manifest, history.manifest[0]);
    EXPECT_EQ(entries[1].manifest, std::nullopt);
}

TEST(TimelineEntries, haveNoBytesAndNoFilesForTheInitialBackup) {
    const auto entries = History().entries();

    EXPECT_EQ(initialEntry(entries), &entries[0]);
    EXPECT_EQ(timelineValue(entries[0], TimelineMetric::changeSize), std::nullopt);
    EXPECT_EQ(timelineValue(entries[0], TimelineMetric::changeCount), std::nullopt);
    EXPECT_EQ(timelineValue(entries[1], TimelineMetric::changeSize), 300);
    EXPECT_EQ(timelineValue(entries[1], TimelineMetric::changeCount), 7);
    EXPECT_EQ(timelineValue(entries[2], TimelineMetric::changeSize), std::nullopt);
}

TEST(TimelineEntries, keepTheIntervalOfAnInitialBackupThatIsNotTheFirst) {
    History history;
    history.manifest[1].isInitialBackup = true;

    EXPECT_EQ(timelineValue(history.entries()[1], TimelineMetric::interval), 1);
}

TEST(TimelineEntries, haveIdentitiesOfTheirOwnInEachBuild) {
    std::set<std::uint64_t> identities;
    for (int build = 0; build < 3; ++build)
        for (const TimelineEntry& entry : History().entries())
            identities.insert(entry.id);

    EXPECT_EQ(identities.size(), 9U);
}

/// The rules as they read, whatever they cost.
std::vector<TimelineEntry> entriesByTheRules(const History& history) {
    std::vector<TimelineEntry> entries;
    std::set<Date> gapStarts;
    for (const auto& gap : history.health.gaps)
        gapStarts.insert(gap.start);
    std::optional<Date> previous;
    for (const Date date : history.destination.snapshotDates) {
        TimelineEntry entry{.date = date};
        if (previous) {
            entry.intervalHours = (date - *previous).count() / 3600;
            entry.isGap = gapStarts.contains(*previous);
        }
        const auto dateOf = [](const BackupManifestEntry& row) { return std::optional(row.completionDate); };
        if (const auto row =
                NearestMatch::index(date, history.manifest, NearestMatch::backupTolerance, dateOf))
            entry.manifest = history.manifest[*row];
        entries.push_back(entry);
        previous = date;
    }
    if (!entries.empty())
        for (const Date date : history.health.suspectedFailedAttempts)
            entries.push_back({.date = date, .isFailure = true});
    std::ranges::stable_sort(entries, {}, &TimelineEntry::date);
    return entries;
}

/// Dates that are close, equal, or far apart, on whole and half minutes so that ties happen.
std::vector<Date> randomDates(std::mt19937& random, std::size_t most) {
    std::vector<Date> dates(random() % (most + 1));
    double seconds = 0;
    for (Date& date : dates) {
        seconds += 30.0 * static_cast<double>(random() % (random() % 4 == 0 ? 2000 : 12));
        date = at(seconds);
    }
    return dates;
}

TEST(TimelineEntries, areWhatTheRulesSayForAnyHistory) {
    std::mt19937 random(20261123);
    for (int round = 0; round < 3000; ++round) {
        History history;
        history.destination.snapshotDates = randomDates(random, 30);
        history.destination.attemptDates = randomDates(random, 30);
        history.health = BackupHealth::analyze(history.destination, at(1e6));
        history.manifest.clear();
        for (const Date date : randomDates(random, 40))
            history.manifest.push_back({.completionDate = date, .changedCount = std::int64_t(random())});
        if (round % 3 == 0)
            std::ranges::shuffle(history.manifest, random);
        if (round % 5 == 0)
            history.manifest.push_back({.completionDate = dateSince1970(std::nan(""))});

        const auto entries = history.entries();
        const auto expected = entriesByTheRules(history);

        ASSERT_EQ(entries.size(), expected.size());
        for (std::size_t index = 0; index < entries.size(); ++index)
            ASSERT_TRUE(entries[index].showsSameAs(expected[index])) << "round " << round << ", " << index;
    }
}

class TimelineSelection : public testing::Test {
protected:
    TimelineSelection() {
        History history;
        history.health.suspectedFailedAttempts = {at(1000), at(5000), at(9000)};
        entries = history.entries();
    }
    std::vector<TimelineEntry> entries; // backups at 0, 2 and 4
};

TEST_F(TimelineSelection, beginsAtTheNewestBackup) {
    EXPECT_EQ(movedSelection(entries, std::nullopt, -1), 4U);
    EXPECT_EQ(movedSelection(entries, 1, 1), 4U); // a failure is no selection
    EXPECT_EQ(movedSelection(entries, 99, 1), 4U);
}

TEST_F(TimelineSelection, stepsOverFailuresAndStopsAtTheEnds) {
    EXPECT_EQ(movedSelection(entries, 0, 1), 2U);
    EXPECT_EQ(movedSelection(entries, 4, -1), 2U);
    EXPECT_EQ(movedSelection(entries, 0, -1), 0U);
    EXPECT_EQ(movedSelection(entries, 0, PTRDIFF_MAX), 4U);
    EXPECT_EQ(movedSelection(entries, 4, PTRDIFF_MIN), 0U);
}

TEST_F(TimelineSelection, isNoneWhereNothingCanBeSelected) {
    EXPECT_EQ(movedSelection({}, std::nullopt, 1), std::nullopt);
    EXPECT_EQ(selectableIndex(entries, 1), std::nullopt);
    EXPECT_EQ(selectableIndex(entries, 99), std::nullopt);
    EXPECT_EQ(selectableIndex(entries, 2), 2U);
}

TEST_F(TimelineSelection, takesTheEntryNearestToThePointer) {
    EXPECT_EQ(indexAtPosition(entries, 1.49), 1U);
    EXPECT_EQ(indexAtPosition(entries, 1.5), 2U);
    EXPECT_EQ(indexAtPosition(entries, -0.4), 0U);
    EXPECT_EQ(indexAtPosition(entries, -0.6), std::nullopt);
    EXPECT_EQ(indexAtPosition(entries, 5.6), std::nullopt);
}

TEST_F(TimelineSelection, isFoundAgainByTheDateOfTheBackup) {
    EXPECT_EQ(indexOfBackup(entries, at(7200)), 4U);
    EXPECT_EQ(indexOfBackup(entries, at(5000)), std::nullopt);
    EXPECT_EQ(indexOfBackup(entries, at(7201)), std::nullopt);
}

} // namespace
} // namespace tallyglass
