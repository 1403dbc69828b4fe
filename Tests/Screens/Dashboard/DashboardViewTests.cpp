#include "Tallyglass/Models/FixtureSession.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/Models/ReadMachine.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

class DashboardTest : public testing::Test {
protected:
    explicit DashboardTest(const char* session = "healthy") {
        if (*session)
            fill(FixtureSession::make(session, stage.model.now())->environment);
        screen = std::make_unique<test::QmlScreen>(
            "import QtQuick.Controls.Basic as Basic\n"
            "Basic.ApplicationWindow { id: window; width: 900; height: 720; visible: true\n"
            "required property ScreenContext context\n"
            "DashboardView { anchors.fill: parent; context: window.context\n"
            "timeline: TimelineView { context: window.context }\n"
            "support: SupportCard { context: window.context }\n"
            "diagnostics: DiagnosticsCard { context: window.context } } }",
            stage.properties());
        screen->theme().setReduceMotion(true);
    }
    [[nodiscard]] bool shows(const char* text) const {
        return screen->tree().hasText(QString::fromUtf8(text));
    }
    /// With what there is on another machine.
    void fill(const AppEnvironment& environment) {
        AppModel other(environment);
        test::readMachine(other);
        stage.model.setFdaStatus(other.fdaStatus());
        stage.model.setSettings(other.settings());
        stage.model.setStatus(other.status());
    }
    void setSettings(const std::function<void(TMSettings&)>& change) {
        TMSettings settings = stage.model.settings().value();
        change(settings);
        stage.model.setSettings(settings);
    }

    test::ScreenStage stage;
    std::unique_ptr<test::QmlScreen> screen;
};

class UnreadDashboardTest : public DashboardTest {
protected:
    UnreadDashboardTest() : DashboardTest("") {}
};

TEST_F(DashboardTest, saysWhatThereIsToDoWithoutADestination) {
    EXPECT_FALSE(shows("No backup destination"));

    setSettings([](TMSettings& settings) { settings.destinations.clear(); });
    screen->until([this] { return shows("No backup destination"); });

    EXPECT_EQ(screen->tree().texts(),
              (QStringList{"No backup destination", "Time Machine has not been configured on this Mac."}));
}

TEST_F(DashboardTest, keepsSayingSoWhileItLooksAgain) {
    stage.model.setSettings(std::nullopt);
    screen->until([this] { return shows("No backup destination"); });
    bool ended = false;
    bool saidSo = true;

    stage.model.refresh([&ended] { ended = true; });
    screen->until([&] {
        saidSo = saidSo && shows("No backup destination");
        return ended;
    });

    EXPECT_TRUE(saidSo);
}

TEST_F(UnreadDashboardTest, saysWhatItWaitsForBeforeTheSettingsHaveBeenRead) {
    screen->until([this] { return shows("Reading the Time Machine settings…"); });
    EXPECT_FALSE(shows("No backup destination"));

    stage.model.setSettings(std::nullopt);

    screen->until([this] { return shows("No backup destination"); });
    EXPECT_FALSE(shows("Reading the Time Machine settings…"));
}

TEST_F(DashboardTest, headsTheScreenWithTheDestination) {
    setSettings([](TMSettings& settings) {
        TMDestination& destination = settings.destinations.front();
        destination.volumeName = "Vault";
        destination.networkURL = "smb://nas.local/vault";
        destination.isEncrypted = true;
        destination.bytesUsed = 860'000'000'000;
        destination.bytesAvailable = 140'000'000'000;
    });
    screen->until([this] { return screen->tree().find(QAccessible::Heading, "Vault").has_value(); });

    EXPECT_EQ(screen->tree().value("Destination capacity"), "86 percent used, running low");
    EXPECT_TRUE(screen->tree().find(QAccessible::Graphic, "Encrypted destination"));
    EXPECT_TRUE(shows("smb://nas.local/vault"));
    EXPECT_EQ(screen->tree().value("Used"), "860 GB, of 1 TB");
    EXPECT_EQ(screen->tree().value("Free"), "140 GB");

    setSettings([](TMSettings& settings) { settings.destinations.front().isEncrypted = false; });
    screen->until([this] { return !screen->tree().find(QAccessible::Graphic, "Encrypted destination"); });
}

TEST_F(DashboardTest, showsARunningBackupWhileItRuns) {
    BackupStatus status{.isRunning = true, .percent = 0.25, .phase = "Copying", .bytesCopied = 5'000'000'000};
    stage.model.setStatus(status);
    screen->until([this] { return shows("Copying"); });
    EXPECT_TRUE(shows("25%"));
    EXPECT_TRUE(shows("5 GB copied"));
    EXPECT_TRUE(screen->tree().find(QAccessible::ProgressBar, "Copying"));

    status.isStopping = true;
    stage.model.setStatus(status);
    screen->until([this] { return shows("Stopping…"); });

    stage.model.setStatus(BackupStatus::idle);
    screen->until([this] { return !shows("Stopping…"); });
    EXPECT_FALSE(shows("5 GB copied"));
}

TEST_F(DashboardTest, saysWhatWentWrong) {
    const auto alert = [this](const char* text) {
        return screen->tree().find(QAccessible::AlertMessage, text);
    };

    stage.model.setLastError("tmutil couldn't be started.");
    screen->until([&] { return alert("tmutil couldn't be started.").has_value(); });
    EXPECT_TRUE(shows("tmutil couldn't be started."));

    stage.model.setLastError(std::nullopt);
    screen->until([&] { return !alert("tmutil couldn't be started."); });
}

TEST_F(DashboardTest, givesTheReasonsBehindTheVerdict) {
    EXPECT_TRUE(shows("Backups healthy"));
    EXPECT_FALSE(shows("Longer than usual"));

    setSettings([this](TMSettings& settings) {
        TMDestination& destination = settings.destinations.front();
        destination.lastResult = 1009;
        std::vector<Date> attempts;
        for (int i = 0; i < 60; ++i)
            attempts.push_back(stage.model.now() - std::chrono::duration<double>(7200.0 + i));
        destination.snapshotDates = {stage.model.now() - std::chrono::duration<double>(36000)};
        destination.attemptDates = attempts;
    });
    screen->until([this] { return shows("60 backups may have failed"); });

    EXPECT_TRUE(shows("Last backup was skipped"));
    EXPECT_TRUE(shows("The backup will continue when connected to a power source. (result code 1009)"));
    EXPECT_TRUE(shows("Suspected failed backups"));
    EXPECT_TRUE(
        shows("Time Machine attempted a backup at these times but no backup followed. macOS records the "
              "attempt but does not surface the failure."));
    screen->until([this] { return screen->tree().texts().filter("· 2 hours ago").size() == 60; });
}

TEST_F(DashboardTest, offersTheGuideWhileAccessIsLocked) {
    stage.model.setFdaStatus(FDAStatus::granted);
    screen->until([this] { return !shows("Unlock backup contents"); });

    stage.model.setFdaStatus(FDAStatus::denied);
    screen->until([this] { return shows("Unlock backup contents"); });
    EXPECT_TRUE(shows("Everything above works without permission. These need Full Disk Access:"));
    EXPECT_TRUE(shows("Browse the files inside any backup"));
    EXPECT_FALSE(shows("Permission state could not be determined on this system."));

    screen->tree().get(QAccessible::Button, "Show me how").press();
    EXPECT_EQ(stage.sheets, std::vector{ScreenContext::AppAccessGuide});
}

TEST_F(UnreadDashboardTest, replacesTheRowsOfTheConfigurationBeforeTheyAreShown) {
    TMSettings settings{.destinations = {TMDestination{.id = "A"}}};
    for (int width = 720; width < 1000; width += 10) {
        stage.model.setSettings(std::nullopt);
        QCoreApplication::processEvents();
        settings.autoBackupInterval = width;
        stage.model.setSettings(settings);
        QCoreApplication::processEvents();
        screen->window()->resize(QSize(width, 560));
        QCoreApplication::processEvents();
    }
    screen->until([this] { return screen->tree().value("Requires AC power") == "No"; });
}

TEST_F(DashboardTest, showsHowTimeMachineIsSetUp) {
    setSettings([](TMSettings& settings) {
        settings.autoBackupEnabled = true;
        settings.autoBackupInterval = 3600;
        settings.skipPaths = {"/Users/ann/Downloads"};
    });
    screen->until([this] { return screen->tree().value("Interval") == "1h"; });

    EXPECT_EQ(screen->tree().value("Automatic backups"), "On");
    EXPECT_TRUE(shows("Excluded from backup"));
    EXPECT_TRUE(shows("/Users/ann/Downloads"));

    setSettings([](TMSettings& settings) { settings.skipPaths.clear(); });
    screen->until([this] { return !shows("Excluded from backup"); });
}

TEST_F(DashboardTest, isWalkedByTabInReadingOrderAndBringsWhatHasTheKeyboardIntoView) {
    stage.model.setFdaStatus(FDAStatus::denied);
    stage.model.setLastError("Something failed.");
    setSettings([](TMSettings& settings) {
        settings.destinations.front().networkURL = "smb://nas.local/vault";
        settings.skipPaths = {"/one", "/two"};
    });
    screen->until([this] { return shows("Something failed.") && shows("/two"); });

    const QStringList expected{"Something failed.",   "smb://nas.local/vault", "Show me how",  "/one", "/two",
                               "Support development", "Capture Diagnostics",   "Run Benchmark"};
    QStringList visited;
    for (int i = 0; i < 20 && !visited.contains(expected.back()); ++i) {
        screen->key(Qt::Key_Tab);
        visited.append(screen->focusedName());
    }

    QStringList mine;
    for (const QString& name : visited)
        if (expected.contains(name))
            mine.append(name);
    EXPECT_EQ(mine, expected) << qPrintable(visited.join(", "));
    const QQuickItem* focused = screen->window()->activeFocusItem();
    const double bottom = focused->mapToScene({0, focused->height()}).y();
    EXPECT_LE(bottom, 720);
    EXPECT_GE(bottom, 0);
}

class DashboardOf : public testing::TestWithParam<std::string_view> {};

TEST_P(DashboardOf, fitsEverySizeOfWindowAndText) {
    const auto session = FixtureSession::make(GetParam(), systemTime()).value();
    test::ScreenStage stage(session.environment);
    test::readMachine(stage.model);
    if (session.actions.capturing != ScreenActions::Work::none)
        stage.model.captureDiagnostics();
    if (session.actions.benchmarking != ScreenActions::Work::none)
        stage.model.runBenchmark(3);
    test::waitUntil([&] {
        return (session.actions.capturing != ScreenActions::Work::finish ||
                !stage.model.diagnosticsProgress()) &&
               (session.actions.benchmarking != ScreenActions::Work::finish ||
                !stage.model.benchmarkProgress());
    });
    test::QmlScreen screen("DashboardView { id: view; timeline: TimelineView { context: view.context }\n"
                           "support: SupportCard { context: view.context }\n"
                           "diagnostics: DiagnosticsCard { context: view.context } }",
                           stage.properties());
    auto* page = qobject_cast<QQuickItem*>(screen.root());

    for (const double scale : {1.0, 2.0})
        for (const QSize size : {QSize(530, 560), QSize(710, 720), QSize(1410, 1000)}) {
            screen.theme().setTextScale(scale);
            page->setSize(size);
            const QImage drawn = screen.picture(); // lets it settle; a warning fails the test
            EXPECT_FALSE(drawn.isNull());
            for (const auto& element : screen.tree().elements()) {
                const auto* item = qobject_cast<QQuickItem*>(element.object());
                const double right = item->mapToItem(page, {item->width(), 0}).x();
                EXPECT_LE(right, size.width()) << qPrintable(element.name()) << " at " << scale;
            }
        }
}

INSTANTIATE_TEST_SUITE_P(, DashboardOf,
                         testing::ValuesIn(FixtureSession::names().begin(), FixtureSession::names().end()),
                         [](const auto& session) {
                             std::string name(session.param);
                             std::erase(name, '-');
                             return name;
                         });

} // namespace
} // namespace tallyglass
