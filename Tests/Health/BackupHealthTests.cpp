#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/BackupResultCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double hour = 3600;
const Date start = dateSince1970(1'780'000'000);

Date after(double seconds) {
    return start + std::chrono::duration<double>(seconds);
}

std::vector<Date> dates(const std::vector<double>& seconds) {
    std::vector<Date> result;
    for (const double second : seconds)
        result.push_back(after(second));
    return result;
}

/// Hourly snapshots, except for the interval at `position` of `seconds`.
std::vector<Date> hourlyBut(std::size_t position, double seconds, std::size_t intervals = 20) {
    std::vector<Date> result{start};
    for (std::size_t index = 0; index < intervals; ++index)
        result.push_back(result.back() + std::chrono::duration<double>(index == position ? seconds : hour));
    return result;
}

TMDestination destination(std::vector<Date> snapshots, std::vector<Date> attempts = {}) {
    TMDestination result;
    result.id = "D";
    result.snapshotDates = std::move(snapshots);
    result.attemptDates = std::move(attempts);
    return result;
}

BackupHealth justAfterTheLast(TMDestination place) {
    const auto now = place.latestSnapshot().value_or(start) + std::chrono::duration<double>(60);
    return BackupHealth::analyze(place, now);
}

TEST(BackupResultCode, explainsTheCodesThatAreKnown) {
    EXPECT_EQ(BackupResultCode{7}.reason(), "Not enough space on the backup disk.");
    EXPECT_EQ(BackupResultCode{3}.reason(), BackupResultCode{6}.reason());
    EXPECT_EQ(BackupResultCode{15}.reason(), BackupResultCode{16}.reason());
    int known = 0;
    for (std::int64_t code = -10; code < 1100; ++code)
        known += BackupResultCode{code}.reason().has_value();
    EXPECT_EQ(known, 56);
    for (const std::int64_t code : {0, 13, 999, -1})
        EXPECT_FALSE(BackupResultCode{code}.reason()) << code;
}

TEST(BackupResultCode, tellsDeferralsFromFailures) {
    std::vector<std::int64_t> deferrals;
    for (std::int64_t code = -10; code < 1100; ++code) {
        if (BackupResultCode{code}.isDeferral())
            deferrals.push_back(code);
        EXPECT_EQ(BackupResultCode{code}.isSuccess(), code == 0);
    }
    EXPECT_THAT(deferrals, ElementsAre(100, 101, 102, 103, 1009));
}

TEST(BackupHealth, suspectsAttemptsThatNoBackupFollowedInTime) {
    const auto suspected = [](double attempt, const std::vector<double>& snapshots, double now) {
        return !BackupHealth::analyze(destination(dates(snapshots), dates({attempt})), after(now))
                    .suspectedFailedAttempts.empty();
    };
    EXPECT_TRUE(suspected(1, {0}, 2 * hour));
    EXPECT_FALSE(suspected(-1, {0}, 2 * hour)) << "before the first snapshot";
    EXPECT_FALSE(suspected(10 * hour, {0}, 11 * hour)) << "too fresh to judge";
    EXPECT_TRUE(suspected(10 * hour, {0}, 11 * hour + 0.001));
    EXPECT_FALSE(suspected(2 * hour, {0, 3 * hour}, 9 * hour)) << "a snapshot at the end of the window";
    EXPECT_TRUE(suspected(2 * hour, {0, 3 * hour + 0.001}, 9 * hour));
    EXPECT_FALSE(suspected(2 * hour, {0, 2 * hour}, 9 * hour)) << "a snapshot at the same moment";
    EXPECT_TRUE(suspected(2 * hour, {0, 2 * hour - 1}, 9 * hour)) << "a snapshot shortly before";
    EXPECT_FALSE(suspected(2 * hour, {}, 9 * hour)) << "no snapshots at all";
}

TEST(BackupHealth, findsUnusuallyLongIntervals) {
    const auto gapAt = [](std::size_t position, double seconds) {
        return justAfterTheLast(destination(hourlyBut(position, seconds))).gaps;
    };
    const auto snapshots = hourlyBut(10, 3 * hour);
    EXPECT_THAT(gapAt(10, 3 * hour), ElementsAre(BackupHealth::Gap{snapshots[10], snapshots[11]}));
    EXPECT_THAT(gapAt(10, 2.5 * hour), IsEmpty());
    EXPECT_EQ(gapAt(1, 3 * hour).size(), 1U) << "judged against what follows";
    EXPECT_THAT(justAfterTheLast(destination(dates({0, 100 * hour}))).gaps, IsEmpty()) << "no rhythm yet";

    auto withTwins = hourlyBut(10, 3 * hour);
    withTwins.push_back(withTwins[10]);
    EXPECT_THAT(justAfterTheLast(destination(withTwins)).gaps,
                ElementsAre(BackupHealth::Gap{snapshots[10], snapshots[11]}));
}

TEST(BackupHealth, measuresTheTimeSinceTheLastBackupAndTheUsualInterval) {
    const auto none = BackupHealth::analyze(destination({}, dates({0, hour})), after(9 * hour));
    EXPECT_EQ(none.timeSinceLastBackup, std::nullopt);
    EXPECT_EQ(none.medianInterval, std::nullopt);

    const auto three = BackupHealth::analyze(destination(dates({0, hour, 4 * hour})), after(3 * hour));
    EXPECT_EQ(three.timeSinceLastBackup, -hour);
    EXPECT_EQ(three.medianInterval, 2 * hour);
}

TEST(BackupHealth, ordersLevelsAndSentencesBySeverity) {
    struct Case {
        std::optional<std::int64_t> used;
        std::optional<std::int64_t> result;
        std::vector<double> attempts;
        double now;
        BackupHealth::Level level;
        std::string summary;
    };
    using enum BackupHealth::Level;
    const std::vector<Case> cases{
        {10, 0, {}, hour, healthy, "Backups healthy"},
        {95, 0, {}, hour, critical, "Destination almost full"},
        {94, 0, {}, hour, warning, "Destination filling up"},
        {85, 0, {}, hour, warning, "Destination filling up"},
        {84, std::nullopt, {}, hour, healthy, "Backups healthy"},
        {10, 0, {}, 172800, healthy, "Backups healthy"},
        {10, 0, {}, 172800.5, critical, "No recent backup"},
        {10, 100, {}, hour, warning, "Last backup was skipped"},
        {10, 100, {1}, 2 * hour, warning, "1 backup may have failed"},
        {90, 27, {1, 2}, 2 * hour, warning, "2 backups may have failed"},
        {10, 4242, {}, hour, warning, "Last backup didn't complete"},
    };
    for (const auto& [used, result, attempts, now, level, summary] : cases) {
        auto place = destination(dates({0}), dates(attempts));
        place.bytesUsed = used;
        place.bytesAvailable = 100 - used.value_or(0);
        place.lastResult = result;
        const auto health = BackupHealth::analyze(place, after(now));
        EXPECT_EQ(health.level(), level) << summary;
        EXPECT_EQ(health.summary(), summary);
    }
    auto irregular = destination(hourlyBut(10, 5 * hour));
    irregular.bytesUsed = irregular.bytesAvailable = 0;
    EXPECT_EQ(justAfterTheLast(irregular).summary(), "Irregular backup schedule");
    EXPECT_EQ(justAfterTheLast(irregular).usedFraction, std::nullopt);
}

TEST(BackupHealth, tellsHowTheLastBackupEnded) {
    const auto ended = [](std::optional<std::int64_t> result) {
        auto place = destination(dates({0}));
        place.lastResult = result;
        return justAfterTheLast(place);
    };
    EXPECT_FALSE(ended(std::nullopt).lastBackupFailed());
    EXPECT_EQ(ended(0).lastBackupReason(), std::nullopt);
    EXPECT_TRUE(ended(100).lastBackupFailed());
    EXPECT_TRUE(ended(100).lastBackupWasDeferred());
    EXPECT_TRUE(ended(4242).lastBackupFailed());
    EXPECT_EQ(ended(4242).lastBackupReason(), std::nullopt);
}

/// A naive implementation: every attempt against every snapshot, every window sorted.
BackupHealth analyzedPlainly(const TMDestination& place, Date now) {
    BackupHealth health;
    const auto& snapshots = place.snapshotDates.values();
    for (const Date attempt : place.attemptDates) {
        if (snapshots.empty() || attempt < snapshots.front() || (now - attempt).count() <= hour)
            continue;
        bool succeeded = false;
        for (const Date snapshot : snapshots)
            succeeded = succeeded || (snapshot >= attempt && (snapshot - attempt).count() <= hour);
        if (!succeeded)
            health.suspectedFailedAttempts.push_back(attempt);
    }
    std::vector<BackupHealth::Gap> intervals;
    for (std::size_t index = 1; index < snapshots.size(); ++index)
        if (snapshots[index] != snapshots[index - 1])
            intervals.push_back({snapshots[index - 1], snapshots[index]});
    const auto medianOf = [&](std::size_t first, std::size_t last) {
        std::vector<double> values;
        for (std::size_t index = first; index < last; ++index)
            values.push_back(intervals[index].duration());
        std::ranges::sort(values);
        const auto half = values.size() / 2;
        return values.size() % 2 ? values[half] : (values[half - 1] + values[half]) * 0.5;
    };
    for (std::size_t index = 0; index < intervals.size(); ++index) {
        const double local = index >= 3 ? medianOf(index < 5 ? 0 : index - 5, index)
                                        : medianOf(index, std::min(index + 6, intervals.size()));
        if (local > 0 && intervals[index].duration() > 2.5 * local)
            health.gaps.push_back(intervals[index]);
    }
    return health;
}

TEST(BackupHealth, agreesWithANaiveImplementationOnRandomHistories) {
    std::mt19937 random(20261122);
    std::exponential_distribution<double> wait(1 / hour);
    for (int round = 0; round < 300; ++round) {
        std::vector<double> snapshots;
        std::vector<double> attempts;
        double time = 0;
        for (int count = static_cast<int>(random() % 60); count > 0; --count) {
            time += std::round(wait(random) / 600) * 600; // round numbers hit the limits exactly
            if (random() % 3 > 0)
                snapshots.push_back(time);
            if (random() % 2 > 0)
                attempts.push_back(time - 1800);
        }
        const auto place = destination(dates(snapshots), dates(attempts));
        const auto expected = analyzedPlainly(place, after(time));
        const auto health = BackupHealth::analyze(place, after(time));
        EXPECT_EQ(health.suspectedFailedAttempts, expected.suspectedFailedAttempts) << "round " << round;
        EXPECT_EQ(health.gaps, expected.gaps) << "round " << round;
    }
}

} // namespace
} // namespace tallyglass
