#include "Tallyglass/Screens/Timeline/TimelineColumns.h"
#include "Tallyglass/Screens/Timeline/TimelineTicks.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using enum TimelineMetric;

TEST(TimelineScale, stepsInUnitsThatAReaderCountsIn) {
    EXPECT_THAT(timelineScale(interval, 7, 4).ticks(), ElementsAre(0, 2, 4, 6, 8));
    EXPECT_THAT(timelineScale(interval, 30, 4).ticks(), ElementsAre(0, 12, 24, 36));
    EXPECT_THAT(timelineScale(interval, 200, 4).ticks(), ElementsAre(0, 120, 240));
    EXPECT_THAT(timelineScale(interval, 0.9, 2).ticks(), ElementsAre(0, 0.5, 1));
    EXPECT_THAT(timelineScale(changeSize, 3.1e9, 4).ticks(), ElementsAre(0, 1e9, 2e9, 3e9, 4e9));
    EXPECT_THAT(timelineScale(changeCount, 3, 4).ticks(), ElementsAre(0, 1, 2, 3));
}

TEST(TimelineScale, reachesTheGreatestValueWithTheStepsThatFit) {
    for (double greatest = 0.01; greatest < 1e19; greatest *= 1.37)
        for (const TimelineMetric metric : allTimelineMetrics)
            for (const std::size_t steps : {2, 3, 5}) {
                const TimelineScale scale = timelineScale(metric, greatest, steps);
                EXPECT_GE(scale.top, greatest * (1 - 1e-6));
                EXPECT_LE(scale.ticks().size(), steps + 1) << greatest;
                EXPECT_GE(scale.ticks().size(), 2U) << greatest;
            }
}

TEST(TimelineScale, standsForValuesThatHaveNone) {
    for (const double greatest : {0.0, -5.0, std::nan(""), HUGE_VAL})
        EXPECT_EQ(timelineScale(changeCount, greatest, 4), (TimelineScale{.step = 1, .top = 1}));
}

/// The days of `count` entries, `perDay` of them on each.
std::vector<std::chrono::local_days> daysOf(std::size_t count, std::size_t perDay) {
    std::vector<std::chrono::local_days> days;
    for (std::size_t index = 0; index < count; ++index)
        days.emplace_back(std::chrono::days(20'000 + index / perDay));
    return days;
}

std::vector<std::size_t> indicesOf(const std::vector<TimelineDateTick>& ticks) {
    std::vector<std::size_t> indices;
    for (const auto& tick : ticks)
        indices.push_back(tick.index);
    return indices;
}

TEST(TimelineDateTicks, standWhereADayBegins) {
    EXPECT_THAT(indicesOf(timelineDateTicks(daysOf(20, 5), TimelineRange::whole(20), 1)),
                ElementsAre(0, 5, 10, 15));
}

TEST(TimelineDateTicks, keepTheirDistance) {
    EXPECT_THAT(indicesOf(timelineDateTicks(daysOf(20, 5), TimelineRange::whole(20), 6)), ElementsAre(0, 10));
    EXPECT_THAT(indicesOf(timelineDateTicks(daysOf(10, 1), TimelineRange::whole(10), 2.5)),
                ElementsAre(0, 3, 6, 9));
}

TEST(TimelineDateTicks, holdStillUnderScrolling) {
    const auto days = daysOf(200, 3);
    const auto all = indicesOf(timelineDateTicks(days, TimelineRange::whole(200), 7));
    const auto some = indicesOf(timelineDateTicks(days, {50.2, 99.9}, 7));

    EXPECT_THAT(some, testing::IsSubsetOf(all));
    EXPECT_EQ(some.size(), 6U);
}

TEST(TimelineDateTicks, nameMonthsWhenDaysOfDifferentYearsAreInSight) {
    const auto days = daysOf(400, 1);
    const auto ticks = timelineDateTicks(days, TimelineRange::whole(400), 50);

    ASSERT_GT(ticks.size(), 3U);
    for (std::size_t index = 1; index < ticks.size(); ++index) {
        EXPECT_TRUE(ticks[index].isMonth);
        EXPECT_EQ(unsigned(std::chrono::year_month_day(days[ticks[index].index]).day()), 1U);
    }
    EXPECT_FALSE(timelineShowsMonths(days, {0, 40}));
}

TEST(TimelineRange, zoomsAroundThePointer) {
    const TimelineRange range = TimelineRange::whole(100).zoomed(2, 25, 100);

    EXPECT_DOUBLE_EQ(range.length(), 50);
    EXPECT_DOUBLE_EQ((25 - range.low) / range.length(), 25.5 / 100);
    EXPECT_EQ(range.zoomed(0.5, 25, 100), TimelineRange::whole(100));
}

TEST(TimelineRange, staysWithinItsBoundsWhateverIsDone) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-200, 200);
    for (int round = 0; round < 300; ++round) {
        const std::size_t count = random() % 150;
        TimelineRange range = TimelineRange::whole(count);
        for (int step = 0; step < 20; ++step) {
            range = step % 3 == 0   ? range.zoomed(std::exp(any(random) / 50), any(random), count)
                    : step % 3 == 1 ? range.scrolled(any(random), count)
                                    : range.showing(count ? random() % count : 0, count);
            ASSERT_GE(range.low, -0.5);
            ASSERT_LE(range.high, double(count) - 0.5 + 1e-9);
            ASSERT_GE(range.length(), std::min(TimelineRange::leastEntries, double(count)) - 1e-9);
            const auto [first, end] = range.indices(count);
            ASSERT_LE(first, end);
            ASSERT_LE(end, count);
        }
    }
}

TEST(TimelineRange, scrollsToShowAnEntryAndNoFurther) {
    const TimelineRange range{9.5, 29.5};

    EXPECT_EQ(range.showing(20, 100), range);
    const TimelineRange left = range.showing(5, 100);
    EXPECT_LT(left.low, 5);
    EXPECT_GT(left.low, 0);
    EXPECT_DOUBLE_EQ(left.length(), range.length());
    EXPECT_GT(range.showing(40, 100).high, 40);
    EXPECT_EQ(range.showing(99, 100).high, 99.5);
}

std::vector<TimelineEntry> hourlyEntries(std::size_t count) {
    std::vector<TimelineEntry> entries(count);
    for (std::size_t index = 0; index < count; ++index)
        entries[index].intervalHours = double(index % 10);
    return entries;
}

TEST(TimelineColumns, areOneForEachEntryWhereThereIsRoom) {
    const auto columns = TimelineColumns::forEntryWidth(12).visible(hourlyEntries(20), interval, {4.6, 8.4});

    ASSERT_EQ(columns.size(), 4U);
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_EQ(
            columns[index],
            (TimelineColumn{
                .position = double(index + 5), .first = index + 5, .count = 1, .value = double(index + 5)}));
}

TEST(TimelineColumns, shareEntriesThatStandTooClose) {
    for (const double width : {0.05, 0.2, 0.7, 1.9, 2.9}) {
        const auto gathering = TimelineColumns::forEntryWidth(width);
        const auto columns = gathering.visible(hourlyEntries(3000), interval, TimelineRange::whole(3000));

        std::size_t next = 0;
        for (std::size_t index = 0; index < columns.size(); ++index) {
            EXPECT_EQ(columns[index].first, next);
            EXPECT_NEAR(columns[index].position * width, (double(index) + 0.5) * 3 - 0.5 * width, 1e-6);
            next += columns[index].count;
        }
        EXPECT_EQ(next, 3000U);
        EXPECT_EQ(columns[1].position, gathering.position(columns[1].first));
    }
}

TEST(TimelineColumns, keepWhatIsUnusualAmongTheirEntries) {
    auto entries = hourlyEntries(16);
    entries[5].isGap = true;
    entries[9] = {.isFailure = true};
    const auto columns =
        TimelineColumns::forEntryWidth(0.75).visible(entries, interval, TimelineRange::whole(16));

    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[1],
              (TimelineColumn{.position = 5.5, .first = 4, .count = 4, .value = 7, .isGap = true}));
    EXPECT_EQ(columns[2],
              (TimelineColumn{.position = 9.5, .first = 8, .count = 4, .value = 8, .hasFailure = true}));
}

TEST(TimelineColumns, areGatheredAlikeUnderScrolling) {
    const auto entries = hourlyEntries(100);
    const auto gathering = TimelineColumns::forEntryWidth(0.41);
    const auto all = gathering.visible(entries, interval, TimelineRange::whole(100));
    for (const TimelineColumn& column : gathering.visible(entries, interval, {21.3, 60.1}))
        EXPECT_THAT(all, testing::Contains(column));
}

} // namespace
} // namespace tallyglass
