#include "Tallyglass/Screens/ShellView.h"
#include "Tests/Screens/QmlScreen.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

class RootViewTest : public testing::Test {
protected:
    ShellView shell;
    test::QmlScreen screen{"RootView {}", {{"shell", QVariant::fromValue(&shell)}}};

    [[nodiscard]] bool isSelected(const char* section) const {
        const auto row = screen.tree().get(QAccessible::ListItem, section);
        return QAccessible::queryAccessibleInterface(row.object())->state().selected;
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
}

TEST_F(RootViewTest, showsASectionByKeyboardAndByScreenReader) {
    screen.key(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(isSelected("Compare"));
    EXPECT_TRUE(screen.tree().hasText("Comparing two backups is on its way."));

    screen.tree().get(QAccessible::ListItem, "Exclusions").press();
    EXPECT_TRUE(isSelected("Exclusions"));
    EXPECT_TRUE(screen.tree().hasText("Managing what is left out of backups is on its way."));
    EXPECT_FALSE(screen.tree().hasText("Comparing two backups is on its way."));
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

TEST_F(RootViewTest, opensTheMenuAndTheAboutSheetByKeyboardAndClosesThemByEscape) {
    screen.theme().setReduceMotion(true);
    screen.tree().get(QAccessible::ButtonMenu, "Menu").press();
    screen.until([&] { return screen.tree().find(QAccessible::MenuItem, "About Tallyglass").has_value(); });

    screen.tree().get(QAccessible::MenuItem, "About Tallyglass").press();
    const QString words = "Makes this computer's Time Machine backups visible.";
    screen.until([&] { return screen.tree().hasText(words); });
    screen.key(Qt::Key_Escape);

    screen.until([&] { return !screen.tree().hasText(words); });
    EXPECT_FALSE(screen.tree().find(QAccessible::MenuItem, "About Tallyglass"));
}

TEST_F(RootViewTest, leavesNothingOutAtTwiceTheSizeOfText) {
    screen.window()->resize(720, 560);
    screen.theme().setTextScale(2);
    QCoreApplication::processEvents();

    for (const auto& element : screen.tree().elements()) {
        const QRect box = QAccessible::queryAccessibleInterface(element.object())->rect();
        if (element.role() == QAccessible::ListItem || element.role() == QAccessible::Button) {
            EXPECT_TRUE(screen.window()->geometry().contains(box)) << qPrintable(element.name());
        }
    }
}

} // namespace
} // namespace tallyglass
