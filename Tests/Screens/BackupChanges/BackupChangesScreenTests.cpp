#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Models/FixtureSession.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "Tests/Screens/Timeline/TimelineScreen.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/Models/ReadMachine.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/Models/UserCache.h"
#include "Tests/Support/ProcessResources.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

namespace tallyglass::test {
namespace {

/// The window's content over a model, with the sheet that the timeline opens.
class ChangesStage : public ScreenStage {
public:
    using ScreenStage::ScreenStage;

    void show(QSize size = {900, 720}) {
        screen = std::make_unique<QmlScreen>("RootView {}", properties(), size);
        screen->theme().setReduceMotion(true);
    }
    [[nodiscard]] QQuickItem* chart() const {
        return screen->root()->property("screen").value<QQuickItem*>()->findChild<TimelineChart*>();
    }
    [[nodiscard]] bool isOpen() const {
        return screen->tree().find(QAccessible::Dialog, "Changes in this backup").has_value();
    }
    /// Opens the changes of the newest backup by keyboard.
    void openNewest() {
        chart()->forceActiveFocus();
        screen->key(Qt::Key_End);
        screen->key(Qt::Key_Return);
        screen->until([this] { return isOpen(); });
    }
    void untilClosed() {
        screen->until([this] { return !isOpen(); });
    }
    void untilText(const QString& text) {
        screen->until([&] { return screen->tree().hasText(text); });
    }
    /// The rows of the list, as a screen reader meets them.
    [[nodiscard]] QStringList rows() const {
        QStringList names;
        for (const QString& text : screen->tree().texts())
            for (const char* kind : {"Added, ", "Removed, ", "Modified, "})
                if (text.startsWith(QLatin1String(kind)))
                    names.append(text);
        return names;
    }

    std::unique_ptr<QmlScreen> screen;
};

class ChangesSheet : public testing::Test {
protected:
    ChangesSheet() {
        TMDestination destination{.id = "A"};
        std::vector<Date> dates;
        for (int index = 0; index < 3; ++index)
            dates.push_back(machine.dateOfBackup(index, 3));
        destination.snapshotDates = dates;
        stage.model.setSettings(TMSettings{.destinations = {destination}});
        stage.model.setFdaStatus(FDAStatus::granted);
        roots = machine.setBackups(3);
    }

    [[nodiscard]] QmlScreen& screen() const { return *stage.screen; }

    const ScriptedMachine machine;
    ChangesStage stage{machine.environment()};
    std::vector<std::string> roots;
};

TEST_F(ChangesSheet, opensFromTheChartTakesTheKeyboardAndGivesItBack) {
    machine.setAdded(roots[2], {"b.txt", "a.txt"});
    stage.show();
    stage.openNewest();
    stage.untilText("Added, a.txt");
    EXPECT_EQ(stage.rows(), (QStringList{"Added, a.txt", "Added, b.txt"}));
    screen().until([&] { return screen().focusedName() == "Added, a.txt"; });

    screen().key(Qt::Key_Escape);
    stage.untilClosed();
    EXPECT_TRUE(stage.chart()->hasActiveFocus());

    stage.openNewest(); // and once more
    screen().tree().get(QAccessible::Button, "Done").press();
    stage.untilClosed();
    EXPECT_TRUE(stage.chart()->hasActiveFocus());
}

TEST_F(ChangesSheet, opensByTheActionOfTheChart) {
    stage.show();
    stage.chart()->forceActiveFocus();
    screen().key(Qt::Key_End);
    screen().tree().get(QAccessible::Slider, "Backup timeline, time gap").press();
    screen().until([&] { return stage.isOpen(); });
}

TEST_F(ChangesSheet, loadsNothingWithoutFullDiskAccessUntilItIsGranted) {
    stage.model.setFdaStatus(FDAStatus::denied);
    stage.show();
    stage.openNewest();
    const auto tree = screen().tree();
    EXPECT_TRUE(tree.hasText("Seeing file changes needs Full Disk Access"));
    EXPECT_TRUE(tree.hasText("tmutil cannot read backup contents without it."));
    EXPECT_THAT(machine.calls(), testing::Not(testing::Contains("listbackups")));

    tree.get(QAccessible::Button, "Show me how").press();
    screen().until([&] { return tree.find(QAccessible::Button, "Open Full Disk Access").has_value(); });
    screen().key(Qt::Key_Escape);
    screen().until([&] { return !tree.find(QAccessible::Button, "Open Full Disk Access"); });
    EXPECT_TRUE(stage.isOpen());

    machine.setAdded(roots[2], {"a.txt"});
    stage.model.setFdaStatus(FDAStatus::granted);
    stage.untilText("Added, a.txt");
}

TEST_F(ChangesSheet, tellsOfTheWaitAndEndsItByCancel) {
    machine.hold("compare");
    stage.show();
    stage.openNewest();
    stage.untilText("Running tmutil compare…");
    for (int second = 0; second < 75; ++second)
        machine.timer->fire();
    stage.untilText("1:15");
    screen().until([&] { return screen().focusedName() == "Cancel"; });

    screen().tree().get(QAccessible::Button, "Cancel").press();
    stage.untilClosed();
    screen().until([] { return ProcessResources::now().children == 0; });
    EXPECT_TRUE(stage.chart()->hasActiveFocus());
}

TEST_F(ChangesSheet, mayBeClosedAtEachOfItsStages) {
    UserCache cache(machine.cacheFile());
    stage.show();
    const auto closeWhen = [this](const std::function<bool()>& condition) {
        stage.openNewest();
        screen().until(condition);
        screen().key(Qt::Key_Escape);
        stage.untilClosed();
    };
    const auto untilNoChild = [this] {
        screen().until([] { return ProcessResources::now().children == 0; });
    };
    const auto shows = [this](const QString& text) {
        return [this, text] { return screen().tree().hasText(text); };
    };

    cache.lock();
    closeWhen([] { return true; });
    cache.unlock();
    for (const char* verb : {"listbackups", "compare"}) {
        machine.hold(verb);
        closeWhen(shows(verb == std::string("compare") ? "Running tmutil compare…" : "Finding backup…"));
        untilNoChild();
        EXPECT_FALSE(cache.hasResult());
        machine.setBackups(3);
    }
    machine.setAdded(roots[2], {"folder/"});
    cache.holdRows();
    closeWhen([&] { return cache.hasResult(); });
    cache.giveRows();
    machine.hold("compare");
    closeWhen([] { return ProcessResources::now().children == 1; }); // that of the folder
    machine.setAdded(roots[2], {"folder/new.txt"});
    untilNoChild();
    closeWhen(shows("Added, folder"));
}

TEST_F(ChangesSheet, saysWhatWentWrong) {
    machine.fail("compare", "tmutil: no such backup\n");
    stage.show();
    stage.openNewest();
    stage.untilText("tmutil: no such backup");
}

TEST_F(ChangesSheet, filtersByPathAndByContent) {
    machine.setAdded(roots[2], {"b.txt", "a.txt"});
    stage.show();
    stage.openNewest();
    stage.untilText("2 shown");
    const auto tree = screen().tree();
    EXPECT_TRUE(tree.get(QAccessible::CheckBox, "Content changes only").isChecked());
    EXPECT_EQ(tree.value("Added"), "2, 20 bytes");

    screen().until(
        [&] { return screen().focusedName() == "Added, a.txt"; }); // which it gets when all is there
    auto* field = qobject_cast<QQuickItem*>(tree.get(QAccessible::EditableText, "Filter paths").object());
    field->forceActiveFocus();
    screen().type("B.t");
    stage.untilText("1 shown");
    screen().until([&] { return stage.rows() == QStringList{"Added, b.txt"}; });
    EXPECT_TRUE(field->hasActiveFocus()); // the list doesn't take it

    screen().type("z");
    stage.untilText("No changes match the current filters.");
    screen().tree().get(QAccessible::Button, "Clear").press();
    stage.untilText("2 shown");
}

TEST_F(ChangesSheet, opensNoFolderThatASearchHasFound) {
    machine.setAdded(roots[2], {"folder/", "folder/file.txt"});
    stage.show();
    stage.openNewest();
    screen().until([&] { return screen().focusedName() == "Added, folder"; });
    const auto tree = screen().tree();
    const auto focus = [&](QAccessible::Role role, const char* name) {
        qobject_cast<QQuickItem*>(tree.get(role, name).object())->forceActiveFocus();
    };
    focus(QAccessible::EditableText, "Filter paths");
    screen().type("folder");
    screen().until([&] { return !tree.find(QAccessible::Button, "Expand folder"); });
    focus(QAccessible::List, "Changed files");
    screen().until([&] { return screen().focusedName() == "Added, folder"; });

    const auto compareRuns = [this] { return std::ranges::count(machine.calls(), "compare"); };
    const auto runsBefore = compareRuns();

    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Right})
        screen().key(key);
    const auto* row = screen().window()->activeFocusItem();
    for (int click = 0; click < 2; ++click)
        screen().click(row->mapToScene({row->width() / 2, row->height() / 2}));
    tree.get(QAccessible::Button, "Clear").press();

    screen().until([&] { return tree.find(QAccessible::Button, "Expand folder").has_value(); });
    EXPECT_FALSE(tree.find(QAccessible::Button, "Collapse folder"));
    EXPECT_EQ(compareRuns(), runsBefore);
}

TEST_F(ChangesSheet, listsMetadataToo) {
    machine.setTouched(roots[1], roots[2], {"a.txt"});
    stage.show();
    stage.openNewest();
    stage.untilText("No changes match the current filters.");
    const auto contentOnly = screen().tree().get(QAccessible::CheckBox, "Content changes only");
    contentOnly.press();
    screen().until([&] { return stage.rows() == QStringList{"Modified, a.txt"}; });
    EXPECT_FALSE(contentOnly.isChecked());
}

TEST_F(ChangesSheet, copiesThePathOfTheRow) {
    machine.setAdded(roots[2], {"a.txt", "b.txt"});
    stage.show();
    stage.openNewest();
    screen().until([&] { return screen().focusedName() == "Added, a.txt"; });
    screen().key(Qt::Key_End);
    EXPECT_EQ(screen().focusedName(), "Added, b.txt");
    screen().key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(stage.clipboard.text, "/b.txt");
    screen().key(Qt::Key_Menu);
    screen().until([&] { return screen().tree().find(QAccessible::MenuItem, "Copy Path").has_value(); });
}

/// The sheet of a made-up session.
class ChangesSession {
public:
    explicit ChangesSession(const char* name) : stage(FixtureSession::make(name, systemTime())->environment) {
        readMachine(stage.model);
        stage.show();
        stage.openNewest();
    }

    ChangesStage stage;
};

TEST(ChangesSessions, areWalkedByKeyboard) {
    ChangesSession session("changes-results");
    const auto& stage = session.stage;
    stage.screen->until([&] { return stage.screen->focusedName() == "Modified, Applications"; });
    const auto focusedAfter = [&](Qt::Key key) {
        stage.screen->key(key);
        return stage.screen->focusedName();
    };
    EXPECT_EQ(focusedAfter(Qt::Key_Up), "Modified, Applications");
    EXPECT_EQ(focusedAfter(Qt::Key_Down), "Modified, Users");
    const auto closed = stage.rows();
    EXPECT_EQ(focusedAfter(Qt::Key_Right), "Modified, Users");
    EXPECT_GT(stage.rows().size(), closed.size());
    EXPECT_EQ(focusedAfter(Qt::Key_Right), "Modified, alex");
    EXPECT_EQ(focusedAfter(Qt::Key_Left), "Modified, Users");
    EXPECT_EQ(focusedAfter(Qt::Key_Left), "Modified, Users");
    EXPECT_EQ(stage.rows(), closed);
    EXPECT_EQ(focusedAfter(Qt::Key_Home), "Modified, Applications");
}

TEST(ChangesSessions, areShownWithoutAWarning) {
    const std::pair<const char*, QString> sessions[] = {
        {"changes-waiting", QStringLiteral("Finding backup…")},
        {"changes-running", QStringLiteral("3.4 MB of results received")},
        {"changes-none", QStringLiteral("Nothing changed between these two backups.")},
        {"changes-metadata", QStringLiteral("Modified")},
        {"changes-failure", QStringLiteral("tmutil: the backup disk was disconnected.")},
        {"changes-oldest",
         QStringLiteral("This is the oldest backup, so there is no earlier one to compare it against.")},
    };
    for (const auto& [name, text] : sessions) {
        ChangesSession session(name);
        session.stage.untilText(text);
    }
}

/// Over backups that are real, with a change three folders deep.
TEST(ChangesOfRealBackups, areBrowsedFolderByFolder) {
    const HostMachine machine;
    machine.folder().write("source/a/b/deep.txt", "one");
    machine.setUp();
    machine.backUp();
    machine.folder().write("source/a/b/deep.txt", "another");
    machine.backUp();
    AppEnvironment environment(SystemPaths(machine.root()), TMUtilRunner(machine.tool()));
    environment.cache = std::make_shared<CacheSession>(environment.runner, machine.folder() / "cache.sqlite");
    ChangesStage stage(environment);
    stage.model.setSettings(TMSettings{.destinations = {machine.destination()}});
    stage.model.setFdaStatus(FDAStatus::granted);

    stage.show();
    stage.openNewest();
    stage.screen->until([&] { return !stage.rows().isEmpty(); });
    // As a screen reader's user would open one folder after the other.
    stage.screen->until([&] {
        if (const auto closed = stage.screen->tree().find(QAccessible::Button, "Expand folder"))
            closed->press();
        return stage.rows().contains("Modified, deep.txt");
    });
    stage.screen->key(Qt::Key_Escape);
    stage.untilClosed();
    stage.screen->until([] { return ProcessResources::now().children == 0; });
}

} // namespace
} // namespace tallyglass::test
