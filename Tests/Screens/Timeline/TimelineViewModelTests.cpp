#include "Tests/Screens/Timeline/TimelineScreen.h"

#include <gmock/gmock.h>

#include <memory>

namespace tallyglass::test {
namespace {

using testing::ElementsAre;
using enum TimelineMetric;

class TimelineViewOfAMachine : public testing::Test {
protected:
    void show(const std::vector<double>& backups, const std::vector<double>& attempts = {}) {
        machine.setHistory(backups, attempts);
        QCoreApplication::processEvents(); // the view looks at the end of the turn
    }
    const TimelineContent& content() { return view.content(); }
    QStringList legend() {
        QStringList texts;
        for (const QVariant& item : content().legend)
            texts.append(item.value<TimelineLegendItem>().text);
        return texts;
    }

    /// How often the view emits a signal from now on.
    std::shared_ptr<const int> counted(void (TimelineViewModel::*signal)()) {
        const auto count = std::make_shared<int>(0);
        QObject::connect(&view, signal, &view, [count] { ++*count; });
        return count;
    }

    TimelineMachine machine;
    TimelineViewModel view;

private:
    void SetUp() override { view.setContext(&machine.context); }
};

TEST_F(TimelineViewOfAMachine, needsTwoEntriesForAChart) {
    EXPECT_FALSE(content().hasChart);
    show({7200});
    EXPECT_FALSE(content().hasChart);
    show({}, {9000, 8000, 7000, 6000, 5000});
    EXPECT_FALSE(content().hasChart);

    show({18000}, {9000}); // one backup and one failure

    EXPECT_TRUE(content().hasChart);
    EXPECT_EQ(view.entries().size(), 2U);
}

TEST_F(TimelineViewOfAMachine, keepsTheSelectionOnItsBackup) {
    show(hourly(4));
    view.select(2);
    const auto moves = counted(&TimelineViewModel::selectionChanged);

    show({5 * 3600.0, 4 * 3600.0, 3 * 3600.0, 2 * 3600.0, 3600, 1800}); // an older and a newer one

    EXPECT_EQ(view.selectedIndex(), 3U);
    EXPECT_EQ(view.entries()[3].date, TimelineMachine::ago(2 * 3600));
    EXPECT_EQ(*moves, 1);
    EXPECT_FALSE(content().date.isEmpty());
}

TEST_F(TimelineViewOfAMachine, dropsTheSelectionWithItsBackup) {
    show(hourly(4));
    view.select(0);

    show(hourly(3));

    EXPECT_EQ(view.selectedIndex(), std::nullopt);
    EXPECT_EQ(content().date, QString());
}

TEST_F(TimelineViewOfAMachine, wakesNobodyWhenNothingItShowsHasChanged) {
    show(hourly(4));
    const auto entries = counted(&TimelineViewModel::entriesChanged);
    const auto contents = counted(&TimelineViewModel::contentChanged);

    machine.model.setLastError("something else");
    QCoreApplication::processEvents();

    EXPECT_EQ(*entries, 0);
    EXPECT_EQ(*contents, 0);
}

TEST_F(TimelineViewOfAMachine, opensTheChangesOfTheSelectedBackup) {
    show(hourly(4));
    view.openSelectedChanges();
    EXPECT_EQ(machine.changesTarget, std::nullopt);

    view.select(1);
    view.openSelectedChanges();

    EXPECT_EQ(machine.changesTarget, TimelinePoint{TimelineMachine::ago(3 * 3600)});
}

TEST_F(TimelineViewOfAMachine, neverSelectsAFailure) {
    show({18000, 3600}, {9000});
    ASSERT_TRUE(view.entries()[1].isFailure);

    view.select(1);
    view.select(99);

    EXPECT_EQ(view.selectedIndex(), std::nullopt);
}

TEST_F(TimelineViewOfAMachine, tellsWhatTheSelectedBackupIs) {
    show({30 * 3600.0, 5 * 3600.0, 4 * 3600.0});
    machine.setManifest(1);
    QCoreApplication::processEvents();

    view.select(0);
    EXPECT_EQ(content().date, "Nov 21, 2026 at 1:38\u202FPM");
    EXPECT_EQ(content().summary, "First backup on this destination");
    EXPECT_EQ(content().detail, "Initial full backup · 812,345 files · 402 GB on disk · 512 GB of data");
    EXPECT_EQ(content().accessibleValue, "Nov 21, 2026 at 1:38\u202FPM");

    view.select(1);
    EXPECT_EQ(content().summary, "1 day, 1 hour since the previous backup");
    EXPECT_EQ(content().detail, "845 files · 201.5 MB on disk · 227.5 MB of data");

    view.select(2);
    EXPECT_EQ(content().detail, "Not in the backup manifest");
}

TEST_F(TimelineViewOfAMachine, saysOfTheFirstBackupWithoutARowOnlyThatItIsTheFirst) {
    show(hourly(3));
    view.select(0);

    EXPECT_EQ(content().summary, "First backup on this destination");
    EXPECT_EQ(content().detail, QString());
}

TEST_F(TimelineViewOfAMachine, readsTheValueOfTheSelectedBackupInEveryMetric) {
    auto backups = hourly(12);
    backups.erase(backups.begin() + 8, backups.begin() + 11); // the last but the newest ones are missing
    show(backups);
    machine.setManifest();
    QCoreApplication::processEvents();
    view.select(8);

    EXPECT_EQ(content().accessibleValue,
              "Nov 22, 2026 at 6:38\u202FPM, 4 hours since the previous backup, longer than usual");
    view.setMetric(changeSize);
    EXPECT_EQ(content().accessibleValue, "Nov 22, 2026 at 6:38\u202FPM, 43.4 MB changed");
    view.setMetric(changeCount);
    EXPECT_EQ(content().accessibleValue, "Nov 22, 2026 at 6:38\u202FPM, 182 files changed");
}

TEST_F(TimelineViewOfAMachine, namesAndExplainsWhatItMeasures) {
    show(hourly(3));
    machine.setManifest();
    QCoreApplication::processEvents();
    EXPECT_EQ(TimelineViewModel::metricNames(), (QStringList{"Time gap", "Change size", "Files changed"}));
    EXPECT_EQ(content().accessibleName, "Backup timeline, time gap");
    EXPECT_EQ(content().caption, QString());

    const QString starred = " ★ Initial full backup (Nov 22, 2026 at 4:38\u202FPM, 402 GB) has no bar: "
                            "beside it the others would vanish.";
    view.setMetric(changeSize);
    EXPECT_EQ(content().accessibleName, "Backup timeline, change size");
    EXPECT_EQ(content().caption,
              "On-disk size of what each backup changed, from Time Machine's own records — no scanning." +
                  starred);
    view.setMetric(changeCount);
    EXPECT_EQ(content().accessibleName, "Backup timeline, files changed");
    EXPECT_EQ(content().caption,
              "Files each backup copied, from Time Machine's own records — no scanning." + starred);
}

TEST_F(TimelineViewOfAMachine, asksForTheHelperOnlyWhereItsSizesAreMissing) {
    show(hourly(3));
    EXPECT_FALSE(content().prompt.shown);

    view.setMetric(changeSize);
    EXPECT_TRUE(content().prompt.shown);
    EXPECT_EQ(content().prompt.title, "Per-backup sizes need a one-time helper");
    EXPECT_EQ(content().prompt.symbol, "lock.badge.clock");
    view.setHelperExists(true);
    EXPECT_EQ(content().prompt.title, "Grant the helper Full Disk Access");
    EXPECT_EQ(content().prompt.symbol, "lock.open.trianglebadge.exclamationmark");

    machine.setManifest(2);
    QCoreApplication::processEvents();
    EXPECT_FALSE(content().prompt.shown);
}

TEST_F(TimelineViewOfAMachine, hintsAtThePermissionThatAClickNeeds) {
    show(hourly(3));
    EXPECT_EQ(content().hint, "Click: needs Full Disk Access");

    machine.model.setFdaStatus(FDAStatus::granted);
    QCoreApplication::processEvents();

    EXPECT_EQ(content().hint, "Click to see file changes");
}

TEST_F(TimelineViewOfAMachine, explainsOnlyTheMarksThatOccur) {
    show(hourly(3));
    EXPECT_THAT(legend(), ElementsAre("Backup", "Typical: 1h"));

    auto backups = hourly(12);
    backups.erase(backups.begin() + 8, backups.begin() + 11);
    show(backups, {2.5 * 3600});
    machine.setManifest(1);
    QCoreApplication::processEvents();
    EXPECT_THAT(legend(),
                ElementsAre("Backup", "Longer than usual", "Suspected failed backup", "Typical: 1h"));
    view.setMetric(changeSize);
    EXPECT_THAT(legend(), ElementsAre("Backup", "Suspected failed backup", "Initial full backup"));
    view.setDifferentiateWithoutColor(true);
    EXPECT_EQ(legend().last(), "Backup without a value");
}

} // namespace
} // namespace tallyglass::test
