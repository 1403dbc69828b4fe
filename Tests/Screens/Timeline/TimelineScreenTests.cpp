#include "Tests/Screens/Timeline/TimelineScreen.h"

#include <gmock/gmock.h>

#include <QHoverEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace tallyglass::test {
namespace {

class TimelineOnScreen : public testing::Test {
protected:
    TimelineScreen& show(const std::vector<double>& backups, const std::vector<double>& attempts = {}) {
        machine.setHistory(backups, attempts);
        machine.model.setFdaStatus(FDAStatus::granted);
        screen = std::make_unique<TimelineScreen>(machine);
        static_cast<void>(screen->picture()); // lays out
        return *screen;
    }
    [[nodiscard]] TimelineViewModel& viewModel() const { return screen->viewModel(); }
    [[nodiscard]] TimelineChart& chart() const { return screen->chart(); }

    void mouse(QEvent::Type type, QPointF position, Qt::MouseButtons buttons) const {
        QMouseEvent event(type, position, screen->window()->mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(screen->window(), &event);
        QCoreApplication::processEvents();
    }
    /// Turns the wheel over an entry. True if the chart took it.
    bool turnWheel(std::size_t index, int steps, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        const QPointF position = screen->place(index);
        QWheelEvent event(position, screen->window()->mapToGlobal(position), {}, {0, steps * 120},
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        event.setAccepted(false);
        QCoreApplication::sendEvent(screen->window(), &event);
        return event.isAccepted();
    }
    /// The colour in the middle of an entry's bar.
    [[nodiscard]] QColor colorOf(std::size_t index) const {
        const QPointF middle = chart().mapToScene(chart().barOf(index).center());
        return screen->picture().pixelColor(middle.toPoint());
    }

    [[nodiscard]] std::vector<std::size_t> indicesOf(bool TimelineEntry::*kind) const {
        std::vector<std::size_t> indices;
        for (std::size_t index = 0; index < viewModel().entries().size(); ++index)
            if (viewModel().entries()[index].*kind)
                indices.push_back(index);
        return indices;
    }
    /// Whether a pixel in a part of the chart has a colour, or more of it than of the ground.
    [[nodiscard]] bool hasColor(const QRectF& part, const QColor& color) const {
        const auto distance = [](const QColor& one, const QColor& other) {
            return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
                   std::abs(one.blue() - other.blue());
        };
        const QImage picture = screen->picture();
        const QRect pixels = chart().mapRectToScene(part).toAlignedRect() & picture.rect();
        for (int y = pixels.top(); y <= pixels.bottom(); ++y)
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                if (const QColor found = picture.pixelColor(x, y);
                    distance(found, color) < distance(screen->theme().cardBackground(), color) / 2)
                    return true;
        return false;
    }
    /// Whether an entry has a mark of a colour in the lane below the bars, close to its middle.
    [[nodiscard]] bool hasInLane(std::size_t index, const QColor& color) const {
        const TimelineLayout& place = chart().layout();
        const double width = std::clamp(place.entryWidth(), 2.0, 4.0);
        return hasColor({place.x(place.columns.position(index)) - width / 2, place.lane.top() + 2, width,
                         place.lane.height() - 4},
                        color);
    }

    TimelineMachine machine;
    std::unique_ptr<TimelineScreen> screen;
};

QColor blended(const QColor& over, const QColor& under, float opacity) {
    const auto mix = [&](float a, float b) { return a * opacity + b * (1 - opacity); };
    return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                            mix(over.blueF(), under.blueF()));
}

/// Whether two colours are the same but for rounding.
bool isLike(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) <= 3 && std::abs(one.green() - other.green()) <= 3 &&
           std::abs(one.blue() - other.blue()) <= 3;
}

TEST_F(TimelineOnScreen, saysWhatIsNeededWhenThereIsTooLittleToChart) {
    show({3600});

    EXPECT_TRUE(screen->tree().hasText("Not enough history"));
    EXPECT_TRUE(screen->tree().hasText("At least two backups are needed to chart cadence."));
    EXPECT_FALSE(screen->tree().find(QAccessible::Slider, "Backup timeline, time gap"));
}

TEST_F(TimelineOnScreen, isOneAdjustableElementForAScreenReader) {
    show(hourly(5));
    auto* value = QAccessible::queryAccessibleInterface(&chart())->valueInterface();
    ASSERT_NE(value, nullptr);

    screen->element().invoke(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(viewModel().selectedIndex(), 4U);
    screen->element().invoke(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(viewModel().selectedIndex(), 3U);
    EXPECT_EQ(screen->element().value(),
              "Nov 22, 2026 at 5:38\u202FPM, 1 hour since the previous backup. "
              "Adjust to move between backups, then activate to see file changes.");
    EXPECT_EQ(value->currentValue(), 4);
    EXPECT_EQ(value->maximumValue(), 5);

    screen->element().press();
    EXPECT_EQ(machine.changesTarget, TimelinePoint{TimelineMachine::ago(2 * 3600)});
}

TEST_F(TimelineOnScreen, measuresWhatIsPicked) {
    show(hourly(5));

    screen->tree().get(QAccessible::RadioButton, "Files changed").press();

    EXPECT_EQ(viewModel().metric(), TimelineMetric::changeCount);
    EXPECT_TRUE(screen->tree().find(QAccessible::Slider, "Backup timeline, files changed"));
}

TEST_F(TimelineOnScreen, movesTheSelectionByKeys) {
    auto backups = hourly(40);
    backups.erase(backups.end() - 2);
    show(backups, {2.5 * 3600}); // which failed, at 38
    chart().forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(chart().hasVisualFocus());

    screen->key(Qt::Key_Home);
    EXPECT_EQ(viewModel().selectedIndex(), 0U);
    screen->key(Qt::Key_Right);
    EXPECT_EQ(viewModel().selectedIndex(), 1U);
    screen->key(Qt::Key_PageDown);
    EXPECT_EQ(viewModel().selectedIndex(), 5U);
    screen->key(Qt::Key_End);
    EXPECT_EQ(viewModel().selectedIndex(), 39U);
    screen->key(Qt::Key_Left);
    EXPECT_EQ(viewModel().selectedIndex(), 37U);

    screen->key(Qt::Key_Return);
    EXPECT_EQ(machine.changesTarget, TimelinePoint{TimelineMachine::ago(3 * 3600)});
    screen->key(Qt::Key_Escape);
    EXPECT_EQ(viewModel().selectedIndex(), std::nullopt);
}

TEST_F(TimelineOnScreen, selectsAndOpensWhatIsClicked) {
    show({10 * 3600.0, 5 * 3600.0, 3600}, {3 * 3600});

    screen->click(screen->place(2)); // the failure
    EXPECT_EQ(viewModel().selectedIndex(), std::nullopt);
    EXPECT_EQ(machine.changesTarget, std::nullopt);

    screen->click(screen->place(1) + QPointF(chart().layout().entryWidth() * 0.45, 0));
    EXPECT_EQ(viewModel().selectedIndex(), 1U);
    EXPECT_EQ(machine.changesTarget, TimelinePoint{TimelineMachine::ago(5 * 3600)});

    screen->click(chart().mapToScene({2, 60})); // on the y axis
    screen->click({screen->place(0).x(), chart().mapToScene(chart().layout().dates.center()).y()});
    EXPECT_EQ(viewModel().selectedIndex(), 1U);
}

TEST_F(TimelineOnScreen, tellsOfTheBarUnderThePointer) {
    show({10 * 3600.0, 5 * 3600.0, 3600}, {3 * 3600});

    mouse(QEvent::MouseMove, screen->place(1), Qt::NoButton);
    screen->until([&] { return !chart().tip().isEmpty(); });
    EXPECT_EQ(chart().tip(), "Nov 22, 2026 at 2:38\u202FPM\n5 hours since the previous backup\n"
                             "Not in the backup manifest");
    mouse(QEvent::MouseMove, screen->place(2), Qt::NoButton);
    screen->until([&] { return chart().tip().contains("Suspected failed backup"); });
    mouse(QEvent::MouseMove, {1, 1}, Qt::NoButton);
    screen->until([&] { return chart().tip().isEmpty(); });
}

TEST_F(TimelineOnScreen, zoomsAroundThePointerAndShowsAllAgain) {
    show(hourly(200));
    const QPointF before = screen->place(50);

    EXPECT_TRUE(turnWheel(50, 3, Qt::ControlModifier));

    EXPECT_TRUE(chart().isZoomed());
    EXPECT_NEAR(screen->place(50).x(), before.x(), 0.01);
    static_cast<void>(screen->picture());
    screen->tree().get(QAccessible::Button, "Show all").press();
    EXPECT_FALSE(chart().isZoomed());
}

TEST_F(TimelineOnScreen, leavesTheWheelToThePageUnlessItHasTheKeyboard) {
    show(hourly(200));

    EXPECT_FALSE(turnWheel(50, 2));
    EXPECT_FALSE(chart().isZoomed());
    chart().forceActiveFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(turnWheel(50, -2)) << "all is in sight already";
    EXPECT_TRUE(turnWheel(50, 2));
    EXPECT_TRUE(chart().isZoomed());
}

TEST_F(TimelineOnScreen, scrollsByTheWheelAndByDragging) {
    show(hourly(200));
    chart().zoom(10, chart().mapFromScene(screen->place(100)).x());
    const double start = chart().range().low;

    EXPECT_TRUE(turnWheel(100, 1, Qt::ShiftModifier));
    const double scrolled = chart().range().low;
    EXPECT_LT(scrolled, start);

    const QPointF from = screen->place(100);
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
    mouse(QEvent::MouseMove, from - QPointF(60, 0), Qt::LeftButton);
    mouse(QEvent::MouseMove, from - QPointF(120, 0), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, from - QPointF(120, 0), Qt::NoButton);
    EXPECT_NEAR(chart().range().low - scrolled, 120 / chart().layout().entryWidth(), 0.01);
    EXPECT_EQ(viewModel().selectedIndex(), std::nullopt) << "a drag is no click";
}

TEST_F(TimelineOnScreen, takesNoDragForAClick) {
    show(hourly(20));

    mouse(QEvent::MouseButtonPress, screen->place(5), Qt::LeftButton);
    mouse(QEvent::MouseMove, screen->place(12), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, screen->place(12), Qt::NoButton);

    EXPECT_EQ(viewModel().selectedIndex(), std::nullopt);
    EXPECT_EQ(chart().range(), TimelineRange::whole(20));
}

TEST_F(TimelineOnScreen, keepsTheSelectionInSight) {
    show(hourly(200));
    chart().zoom(10, 0);

    chart().forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_End);

    EXPECT_EQ(chart().range().high, 199.5);
}

TEST_F(TimelineOnScreen, staysWhereItIsWhenABackupIsAdded) {
    show(hourly(200));
    chart().zoom(10, chart().mapFromScene(screen->place(100)).x());
    const TimelineRange middle = chart().range();
    auto more = hourly(201);
    more.push_back(600);

    machine.setHistory(more); // one more at each end
    QCoreApplication::processEvents();

    EXPECT_NEAR(chart().range().low, middle.low + 1, 1e-9);
}

TEST_F(TimelineOnScreen, drawsEachBarInItsColor) {
    auto backups = hourly(30);
    backups.erase(backups.begin() + 20, backups.begin() + 24);
    show(backups);
    const Theme& theme = screen->theme();
    for (const bool dark : {false, true}) {
        screen->theme().setDark(dark);
        EXPECT_TRUE(isLike(colorOf(10), theme.accent()));
        EXPECT_TRUE(isLike(colorOf(20), theme.warning()));
        const QPointF above =
            chart().mapToScene(chart().barOf(10).center() - QPointF(0, chart().barOf(10).height()));
        EXPECT_TRUE(isLike(screen->picture().pixelColor(above.toPoint()), theme.cardBackground()));
    }
}

TEST_F(TimelineOnScreen, dimsAllBarsButTheSelectedOne) {
    show(hourly(30));
    const Theme& theme = screen->theme();
    const QColor dim = blended(theme.accent(), theme.cardBackground(), 0.4F);

    for (const std::size_t selected : {10, 11, 29}) {
        viewModel().select(selected);
        EXPECT_TRUE(isLike(colorOf(selected), theme.accent())) << selected;
        EXPECT_TRUE(isLike(colorOf(5), dim)) << selected;
    }
    viewModel().clearSelection();
    EXPECT_TRUE(isLike(colorOf(5), theme.accent()));
}

TEST_F(TimelineOnScreen, showsTheGapAmongThousandsOfBackups) {
    auto backups = hourly(3010);
    backups.erase(backups.begin() + 1500, backups.begin() + 1510);
    show(backups);
    ASSERT_TRUE(viewModel().entries()[1500].isGap);

    EXPECT_TRUE(isLike(colorOf(1500), screen->theme().warning()));
    EXPECT_TRUE(isLike(colorOf(300), screen->theme().accent()));
}

TEST_F(TimelineOnScreen, helpsToInstallTheHelper) {
    show(hourly(3));
    viewModel().setMetric(TimelineMetric::changeSize);

    screen->tree().get(QAccessible::Button, "Copy command").press();

    EXPECT_EQ(machine.clipboard.text, "cd ~/Development/Tallyglass && ./setup-helper.sh");
    EXPECT_TRUE(screen->tree().find(QAccessible::Button, "Copied — run it in Terminal"));
}

TEST_F(TimelineOnScreen, helpsTheInstalledHelperToItsPermission) {
    machine.folder.write("usr/local/libexec/tallyglass-helper", "");
    machine.helperSetup.lookForHelper();
    show(hourly(3));
    viewModel().setMetric(TimelineMetric::changeCount);
    EXPECT_TRUE(screen->tree().hasText("Grant the helper Full Disk Access"));

    screen->tree().get(QAccessible::Button, "Show me how").press();
    EXPECT_THAT(machine.sheets, testing::ElementsAre(ScreenContext::HelperAccessGuide));

    machine.folder.write(
        "Library/Application Support/Tallyglass/backup_manifest.plist",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><date>2026-11-22T18:38:00Z</date>"
        "<dict/></array></plist>");
    screen->tree().get(QAccessible::Button, "Refresh").press();
    screen->until([&] { return machine.model.manifest().size() == 1; });
    screen->until([&] { return !screen->tree().hasText("Grant the helper Full Disk Access"); });
}

TEST_F(TimelineOnScreen, marksEachOfManyFailuresInARow) {
    auto backups = hourly(70);
    backups.erase(backups.begin() + 30, backups.begin() + 36);
    std::vector<double> attempts;
    for (int hours = 35; hours < 40; ++hours)
        attempts.push_back(hours * 3600.0 + 1800);
    show(backups, attempts);

    const auto failures = indicesOf(&TimelineEntry::isFailure);
    EXPECT_EQ(failures.size(), 5U);
    for (const std::size_t index : failures)
        EXPECT_TRUE(hasInLane(index, screen->theme().critical())) << index;
    EXPECT_FALSE(hasInLane(10, screen->theme().critical()));
}

TEST_F(TimelineOnScreen, marksAFailureThatSharesItsBarWithTheInitialBackup) {
    auto backups = hourly(3000);
    backups.erase(backups.begin() + 1);
    show(backups, {2999.5 * 3600});
    machine.setManifest();
    viewModel().setMetric(TimelineMetric::changeSize);
    screen->until([&] { return viewModel().entries()[0].isInitialBackup(); });
    ASSERT_TRUE(viewModel().entries()[1].isFailure);

    EXPECT_TRUE(hasInLane(1, screen->theme().critical()));
}

TEST_F(TimelineOnScreen, marksEachGapForWhoSeesNoColors) {
    std::vector<double> backups;
    for (double hours = 1; backups.size() < 230; hours += backups.size() % 3 == 0 ? 10 : 1)
        backups.insert(backups.begin(), hours * 3600);
    show(backups);
    screen->theme().setDifferentiateWithoutColor(true);

    const auto gaps = indicesOf(&TimelineEntry::isGap);
    EXPECT_GT(gaps.size(), 70U);
    for (const std::size_t index : gaps) {
        const QRectF bar = chart().barOf(index);
        const double width = chart().layout().entryWidth();
        EXPECT_TRUE(
            hasColor({bar.center().x() - width / 2, bar.top() - 12, width, 10}, screen->theme().warning()))
            << index;
    }
}

TEST_F(TimelineOnScreen, marksEachBackupWithoutValueForWhoSeesNoColors) {
    show(hourly(60));
    screen->theme().setDifferentiateWithoutColor(true);
    viewModel().setMetric(TimelineMetric::changeSize); // without a manifest

    for (std::size_t index = 0; index < viewModel().entries().size(); ++index)
        EXPECT_TRUE(hasInLane(index, screen->theme().secondaryText())) << index;
}

} // namespace
} // namespace tallyglass::test
