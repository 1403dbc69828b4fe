#include "Tallyglass/Screens/Shell/AppDelegate.h"
#include "Tallyglass/Screens/Shell/TallyglassApp.h"
#include "Tests/Screens/AccessibleTree.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/Variable.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <algorithm>

namespace tallyglass {
namespace {

QWindow* mainWindow() {
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->objectName() == QLatin1String("main"))
            return window;
    return nullptr;
}

TEST(TallyglassApp, endsWithItsWindowWhereThereIsNoTray) {
    TallyglassApp app({.fixture = "healthy"});
    app.showWindow();
    ASSERT_NE(mainWindow(), nullptr);
    EXPECT_EQ(mainWindow()->title(), "Tallyglass");
    EXPECT_EQ(mainWindow()->minimumSize(), QSize(720, 560));

    QTimer::singleShot(0, mainWindow(), &QWindow::close);
    QTimer::singleShot(std::chrono::minutes(1), qGuiApp, [] { QCoreApplication::exit(1); });

    EXPECT_EQ(QGuiApplication::exec(), 0);
}

TEST(TallyglassApp, showsTheWholeWindowWithItsData) {
    QAccessible::setActive(true);
    TallyglassApp app({.fixture = "warning"});
    const test::AccessibleTree screen(mainWindow());

    app.showWindow();

    test::waitUntil([&] { return screen.find(QAccessible::List, "Sections").has_value(); });
    test::waitUntil([&] { return screen.find(QAccessible::Heading, "Backup Disk").has_value(); });
    EXPECT_EQ(screen.value("Destination capacity"), "88 percent used, running low");
    EXPECT_TRUE(screen.hasText("Last backup was skipped"));
    EXPECT_TRUE(screen.find(QAccessible::Button, "Refresh").has_value());
    EXPECT_TRUE(screen.find(QAccessible::Grouping, "Configuration").has_value());
}

TEST(TallyglassApp, followsASlowMachinesBackupToItsEndThoughNoFrameIsDrawn) {
    const test::ScriptedMachine machine;
    machine.setStatus("Running = 1;");
    machine.delay("0.05");
    const test::Variable root("TALLYGLASS_ROOT", machine.folder().path().string());
    const auto count = [&](const char* verb) { return std::ranges::count(machine.calls(), verb); };
    const auto until = [](const auto& condition) {
        const QDeadlineTimer deadline(15'000); // less than the pause of an idle machine
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        return condition();
    };

    const TallyglassApp app({}); // and its window is never shown

    EXPECT_TRUE(until([&] { return count("status") == 2; }));
    machine.setStatus("Running = 0;");
    const auto before = count("machinedirectory");
    EXPECT_TRUE(until([&] { return count("machinedirectory") > before; })); // as at the end of a backup
}

TEST(AppDelegate, bringsAClosedWindowBackWhenTheProgramIsStartedAgain) {
    test::ScreenStage stage;
    QWindow window;
    AppDelegate delegate(stage.model, window);
    window.show();
    window.close();
    ASSERT_FALSE(window.isVisible());

    delegate.applicationShouldHandleReopen();

    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

TEST(AppDelegate, looksForThePermissionWhenTheProgramBecomesActive) {
    test::ScreenStage stage;
    QWindow window;
    AppDelegate delegate(stage.model, window);
    const auto probed = stage.folder.write("Library/Application Support/com.apple.TCC/TCC.db", "");

    stage.model.setFixtureSession(true);
    delegate.applicationDidBecomeActive();
    EXPECT_EQ(stage.model.fdaStatus(), FDAStatus::indeterminate);

    stage.model.setFixtureSession(false);
    delegate.applicationDidBecomeActive();
    test::waitUntil([&] { return stage.model.fdaStatus() == FDAStatus::granted; });
}

} // namespace
} // namespace tallyglass
