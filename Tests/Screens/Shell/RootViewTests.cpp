#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tallyglass {
namespace {

class RootViewTest : public testing::Test {
protected:
    test::ScreenStage stage;
    test::QmlScreen screen{"RootView {}", stage.properties()};

    [[nodiscard]] bool isSelected(const char* section) const {
        const auto row = screen.tree().get(QAccessible::ListItem, section);
        return QAccessible::queryAccessibleInterface(row.object())->state().selected;
    }
    void openMenu() {
        screen.tree().get(QAccessible::Button, "Menu").press();
        screen.until([&] { return screen.tree().find(QAccessible::MenuItem, "Quit").has_value(); });
    }
    void installHelper() {
        const std::filesystem::path helper = stage.helperSetup.helperPath().toStdString();
        std::filesystem::create_directories(helper.parent_path());
        std::ofstream(helper) << "helper";
    }
};

TEST_F(RootViewTest, listsTheSectionsAndSelectsTheFirst) {
    QStringList rows;
    for (const auto& element : screen.tree().elements())
        if (element.role() == QAccessible::ListItem)
            rows.append(element.name());

    EXPECT_EQ(rows, (QStringList{"Overview", "Compare", "File History", "Exclusions"}));
    EXPECT_TRUE(isSelected("Overview"));
    EXPECT_FALSE(isSelected("Compare"));
}

TEST_F(RootViewTest, showsLiteModeUntilAccessIsGranted) {
    EXPECT_TRUE(screen.tree().hasText("Lite mode"));

    stage.model.setFdaStatus(FDAStatus::granted);
    screen.until([&] { return !screen.tree().hasText("Lite mode"); });

    stage.model.setFdaStatus(FDAStatus::denied);
    screen.until([&] { return screen.tree().hasText("Lite mode"); });
}

TEST_F(RootViewTest, saysTheVerdictBelowTheTitle) {
    stage.model.setFdaStatus(FDAStatus::granted);
    stage.model.setSettings(TMSettings{.destinations = {TMDestination{.id = "A"}}});

    const QString summary = QString::fromStdString(stage.model.health()->summary());

    screen.until([&] { return screen.tree().hasText(summary); });
}

TEST_F(RootViewTest, showsASectionByKeyboardAndByScreenReader) {
    screen.key(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(isSelected("Compare"));
    EXPECT_TRUE(screen.tree().hasText("Comparing backups needs Full Disk Access"));

    screen.tree().get(QAccessible::ListItem, "Exclusions").press();
    EXPECT_TRUE(isSelected("Exclusions"));
    EXPECT_TRUE(screen.tree().hasText("What's left out of backups"));
    EXPECT_FALSE(screen.tree().hasText("Comparing backups needs Full Disk Access"));
}

TEST_F(RootViewTest, showsTheScreenThatAnotherOneAsksFor) {
    stage.model.setFdaStatus(FDAStatus::granted);
    stage.context.openSheet(ScreenContext::BackupChanges);
    screen.until(
        [&] { return screen.tree().find(QAccessible::Dialog, "Changes in this backup").has_value(); });
    stage.context.traceFile("/Users/me/notes.txt");
    EXPECT_TRUE(isSelected("File History"));
    screen.until([&] { return !screen.tree().find(QAccessible::Dialog, "Changes in this backup"); });
    EXPECT_EQ(screen.tree().get(QAccessible::EditableText, "Path").value(), "/Users/me/notes.txt");

    stage.context.compareBackups("/older", "/newer");
    EXPECT_TRUE(isSelected("Compare"));
}

TEST_F(RootViewTest, movesInTheSidebarByArrowsHomeAndEnd) {
    screen.key(Qt::Key_Tab);
    EXPECT_EQ(screen.focusedName(), "Sections");

    screen.key(Qt::Key_Down);
    EXPECT_TRUE(isSelected("Compare"));
    screen.key(Qt::Key_End);
    EXPECT_TRUE(isSelected("Exclusions"));
    screen.key(Qt::Key_Down);
    EXPECT_TRUE(isSelected("Exclusions"));
    screen.key(Qt::Key_Home);
    EXPECT_TRUE(isSelected("Overview"));
}

TEST_F(RootViewTest, opensTheMenuAndTheAboutSheetAndClosesThemByEscape) {
    screen.theme().setReduceMotion(true);
    openMenu();

    screen.tree().get(QAccessible::MenuItem, "About Tallyglass").press();
    const QString words = "Makes this computer's Time Machine backups visible.";
    screen.until([&] { return screen.tree().hasText(words); });
    screen.key(Qt::Key_Escape);

    screen.until([&] { return !screen.tree().hasText(words); });
    EXPECT_FALSE(screen.tree().find(QAccessible::MenuItem, "About Tallyglass"));
}

TEST_F(RootViewTest, namesItsMenu) {
    screen.theme().setReduceMotion(true);
    openMenu();

    EXPECT_TRUE(screen.tree().find(QAccessible::PopupMenu, "Menu"))
        << qPrintable(screen.tree().description());
}

TEST_F(RootViewTest, changesTheWidthOfTheSidebarByKeyboardAndByScreenReader) {
    const auto width = [&] { return screen.root()->property("sidebarWidth").toDouble(); };
    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_Tab);
    EXPECT_EQ(screen.focusedName(), "Width of the sidebar");
    const auto handle = screen.tree().get(QAccessible::Slider, "Width of the sidebar");
    auto* value = QAccessible::queryAccessibleInterface(handle.object())->valueInterface();
    EXPECT_EQ(value->currentValue().toDouble(), 190);

    screen.key(Qt::Key_Right);
    EXPECT_EQ(width(), 200);
    screen.key(Qt::Key_Home);
    screen.key(Qt::Key_Left);
    EXPECT_EQ(width(), 170);

    value->setCurrentValue(1000);
    EXPECT_EQ(width(), 240);
    EXPECT_EQ(value->currentValue().toDouble(), 240);
}

TEST_F(RootViewTest, uninstallsOnlyWhileTheHelperIsThere) {
    screen.theme().setReduceMotion(true);
    openMenu();
    EXPECT_FALSE(screen.tree().get(QAccessible::MenuItem, "Uninstall Tallyglass…").isEnabled());
    screen.key(Qt::Key_Escape);

    installHelper();
    openMenu();
    screen.tree().get(QAccessible::MenuItem, "Uninstall Tallyglass…").press();

    screen.until([&] { return screen.tree().hasText("Remove Tallyglass’s helper?"); });
    screen.tree().get(QAccessible::Button, "Cancel").press();
    screen.until([&] { return !screen.tree().hasText("Remove Tallyglass’s helper?"); });
    EXPECT_FALSE(stage.alerts.isShowing());
}

TEST_F(RootViewTest, showsAlertsOneAfterTheOther) {
    screen.theme().setReduceMotion(true);
    QStringList answers;
    const auto note = [&](const char* name) {
        return [&answers, name](bool confirmed) {
            answers.append(QLatin1String(name) + QLatin1String(confirmed ? " yes" : " no"));
        };
    };

    stage.alerts.show({.title = "First", .cancelText = "No"}, &screen.theme(), note("first"));
    stage.alerts.show({.title = "Second"}, &screen.theme(), note("second"));
    screen.until([&] { return screen.tree().hasText("First"); });
    screen.key(Qt::Key_Escape);
    screen.until([&] { return screen.tree().hasText("Second"); });
    screen.tree().get(QAccessible::Button, "OK").press();

    screen.until([&] { return answers.size() == 2; });
    EXPECT_EQ(answers, (QStringList{"first no", "second yes"}));
}

TEST(SmallRootView, leavesNothingOutAtTwiceTheSizeOfText) {
    test::ScreenStage stage;
    stage.model.setSettings(TMSettings{.destinations = {TMDestination{.id = "A"}}});
    test::QmlScreen screen{"RootView {}", stage.properties(), {720, 560}};
    screen.theme().setTextScale(2);
    static_cast<void>(screen.picture()); // lays everything out

    const QStringList frame{"Overview", "Compare",     "File History", "Exclusions",
                            "Refresh",  "Back Up Now", "Menu"};
    int seen = 0;
    for (const auto& element : screen.tree().elements()) {
        if (!frame.contains(element.name()))
            continue;
        ++seen;
        const QRect box = QAccessible::queryAccessibleInterface(element.object())->rect();
        EXPECT_TRUE(screen.window()->geometry().contains(box)) << qPrintable(element.name());
    }
    EXPECT_EQ(seen, frame.size());
}

} // namespace
} // namespace tallyglass
