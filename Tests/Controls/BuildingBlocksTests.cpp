#include "Tallyglass/Controls/Cards/CapacityRingContent.h"
#include "Tests/Screens/QmlScreen.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tallyglass {
namespace {

using test::QmlScreen;

TEST(CapacityRing, changesItsWordsAndColourAtTheThresholds) {
    const auto at = [](double fraction) { return capacityRingContent(fraction, {}, {}, true); };

    EXPECT_EQ(at(0.8499).role, Theme::Role::healthy);
    EXPECT_EQ(at(0.8499).symbol, "checkmark.circle.fill");
    EXPECT_EQ(at(0.8499).accessibleValue, "85 percent used, plenty free");
    EXPECT_EQ(at(0.85).role, Theme::Role::warning);
    EXPECT_EQ(at(0.85).symbol, "exclamationmark.triangle.fill");
    EXPECT_EQ(at(0.85).accessibleValue, "85 percent used, running low");
    EXPECT_EQ(at(0.95).role, Theme::Role::critical);
    EXPECT_EQ(at(0.95).symbol, "exclamationmark.octagon.fill");
    EXPECT_EQ(at(0.95).accessibleValue, "95 percent used, nearly full");
}

TEST(CapacityRing, isUnknownWithoutAFraction) {
    const CapacityRingContent content = capacityRingContent({}, 5, {}, true);

    EXPECT_FALSE(content.known);
    EXPECT_EQ(content.accessibleValue, "Unknown");
    EXPECT_EQ(content.symbol, "");
}

TEST(CapacityRing, showsASymbolOnlyToThoseWhoCantGoByColour) {
    EXPECT_EQ(capacityRingContent(0.5, {}, {}, false).symbol, "");
    EXPECT_EQ(capacityRingContent(0.5, {}, {}, false).text, "50%");
}

TEST(CapacityRing, isOneElementToAScreenReader) {
    const QVariantMap content{{"content", QVariant::fromValue(capacityRingContent(0.72, {}, {}, true))}};

    QmlScreen screen("CapacityRing {}", content);

    EXPECT_EQ(screen.tree().value("Destination capacity"), "72 percent used, plenty free");
    EXPECT_EQ(screen.tree().texts(), QStringList{"Destination capacity"});
}

TEST(CapacityRing, drawsItsFractionFromTheStart) {
    const QVariantMap content{{"content", QVariant::fromValue(capacityRingContent(0.75, {}, {}, false))}};
    QmlScreen screen("CapacityRing {}", content);
    const auto items = qobject_cast<QQuickItem*>(screen.root())->childItems();
    const auto arc =
        std::ranges::find_if(items, [](auto* item) { return item->inherits("tallyglass::CapacityArc"); });
    ASSERT_NE(arc, items.end());

    EXPECT_EQ((*arc)->property("fraction").toDouble(), 0.75);
}

TEST(StatTile, isOneElementWithItsValueAndCaption) {
    QmlScreen screen("Column {"
                     "StatTile { label: 'Used'; value: '1 TB'; caption: 'of 2 TB' }"
                     "StatTile { label: 'Free'; value: '1 TB' } }");

    EXPECT_EQ(screen.tree().value("Used"), "1 TB, of 2 TB");
    EXPECT_EQ(screen.tree().value("Free"), "1 TB");
    EXPECT_EQ(screen.tree().texts().size(), 2);
}

TEST(Card, isHeadedByItsTitle) {
    QmlScreen screen("Card { title: 'Health'; systemImage: 'heart.fill'; Body { text: 'Well' } }");

    EXPECT_TRUE(screen.tree().find(QAccessible::Heading, "Health"));
    EXPECT_TRUE(screen.tree().find(QAccessible::Grouping, "Health"));
    EXPECT_EQ(screen.tree().texts(), (QStringList{"Health", "Well"}));
}

TEST(Button, isPressedByScreenReaderAndReturn) {
    QmlScreen screen("Item { property int presses: 0;"
                     "Button { text: 'Refresh'; systemImage: 'arrow.clockwise'; onClicked: presses += 1 } }");

    screen.tree().get(QAccessible::Button, "Refresh").press();
    EXPECT_EQ(screen.root()->property("presses"), 1);
    screen.key(Qt::Key_Tab);
    EXPECT_EQ(screen.focusedName(), "Refresh");
    screen.key(Qt::Key_Return);

    EXPECT_EQ(screen.root()->property("presses"), 2);
}

TEST(SegmentedPicker, movesByArrowsAndByScreenReader) {
    QmlScreen screen("Item { SegmentedPicker { label: 'Metric'; model: ['One', 'Two', 'Three'];"
                     "onActivated: index => currentIndex = index } }");
    const auto checked = [&](const char* name) {
        return screen.tree().get(QAccessible::RadioButton, name).isChecked();
    };
    EXPECT_TRUE(checked("One"));

    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_Right);
    EXPECT_TRUE(checked("Two"));
    screen.key(Qt::Key_End);
    EXPECT_TRUE(checked("Three"));
    screen.tree().get(QAccessible::RadioButton, "One").press();

    EXPECT_TRUE(checked("One"));
    EXPECT_FALSE(checked("Three"));
}

TEST(SegmentedPicker, tellsAScreenReaderWhatTheArrowsPick) {
    QmlScreen screen("Item { SegmentedPicker { label: 'Metric'; model: ['One', 'Two', 'Three'];"
                     "onActivated: index => currentIndex = index } }");
    static_cast<void>(screen.tree()); // a screen reader is there
    screen.key(Qt::Key_Tab);
    EXPECT_EQ(screen.tree().get(QAccessible::Grouping, "Metric").value(), "One");

    screen.key(Qt::Key_Right);

    EXPECT_EQ(screen.tree().get(QAccessible::Grouping, "Metric").value(), "Two");
    EXPECT_TRUE(screen.tree().get(QAccessible::RadioButton, "Two").isFocused());
    EXPECT_FALSE(screen.tree().get(QAccessible::RadioButton, "One").isFocused());
}

class SheetTest : public testing::Test {
protected:
    QmlScreen screen{
        "import QtQuick.Controls.Basic as Basic\n"
        "Basic.ApplicationWindow { property int closings: 0; width: 720; height: 560; visible: true\n"
        "Button { id: opener; text: 'Open'; onClicked: sheet.open() }\n"
        "Sheet { id: sheet; objectName: 'sheet'; title: 'Guide'; onClosed: closings += 1\n"
        "  Body { text: 'Words' }\n"
        "  Button { text: 'First' } Button { text: 'Second' } } }"};
    void SetUp() override {
        screen.theme().setReduceMotion(true);
        screen.key(Qt::Key_Tab);
        ASSERT_EQ(screen.focusedName(), "Open");
        screen.key(Qt::Key_Return);
        screen.until([&] { return screen.tree().hasText("Words"); });
    }
};

TEST_F(SheetTest, keepsTheKeyboardWithinIt) {
    QStringList visited;
    for (int i = 0; i < 6; ++i) {
        screen.key(Qt::Key_Tab);
        visited.append(screen.focusedName());
    }

    EXPECT_TRUE(visited.contains("First"));
    EXPECT_TRUE(visited.contains("Second"));
    EXPECT_FALSE(visited.contains("Open"));
}

TEST_F(SheetTest, isOneDialogWithItsTitle) {
    QStringList dialogs;
    for (const auto& element : screen.tree().elements())
        if (element.role() == QAccessible::Dialog)
            dialogs.append(element.name());

    EXPECT_EQ(dialogs, QStringList{"Guide"}) << qPrintable(screen.tree().description());
}

TEST_F(SheetTest, closesByEscapeAndGivesTheKeyboardBack) {
    screen.key(Qt::Key_Escape);
    screen.until([&] { return screen.root()->property("closings") == 1; });

    EXPECT_FALSE(screen.tree().hasText("Words"));
    EXPECT_EQ(screen.focusedName(), "Open");
}

TEST(ScrollPage, hasATrackAtItsRightEdgeThatMovesWithThePage) {
    QmlScreen screen("ScrollPage { Item { width: 1; height: 3000 } }", {}, {400, 300});
    auto* page = qobject_cast<QQuickItem*>(screen.root());
    const auto items = page->childItems();
    const auto track =
        std::ranges::find_if(items, [](auto* item) { return item->inherits("QQuickScrollBar"); });
    ASSERT_NE(track, items.end());

    EXPECT_EQ((*track)->x() + (*track)->width(), 400);
    EXPECT_EQ((*track)->height(), 300);
    EXPECT_EQ((*track)->property("position").toDouble(), 0);
    page->setProperty("contentY", page->property("contentHeight").toDouble() / 2);
    EXPECT_DOUBLE_EQ((*track)->property("position").toDouble(), 0.5);
}

TEST(Reveal, takesNoRoomWhileItIsHidden) {
    QmlScreen screen(
        "Column { id: column; property bool more: false; spacing: 8\n"
        "Rectangle { width: 50; height: 10 }\n"
        "Reveal { width: 50; spacing: 8; revealed: column.more; Rectangle { width: 50; height: 20 } }\n"
        "Rectangle { width: 50; height: 10 } }");
    auto* column = qobject_cast<QQuickItem*>(screen.root());
    double lowest = 28;
    double highest = 28;
    QObject::connect(column, &QQuickItem::implicitHeightChanged, [&] {
        lowest = std::min(lowest, column->implicitHeight());
        highest = std::max(highest, column->implicitHeight());
    });
    EXPECT_EQ(column->implicitHeight(), 28);

    column->setProperty("more", true);
    screen.until([&] { return column->implicitHeight() == 56; });
    EXPECT_GE(lowest, 28) << "it grows without a step back";
    EXPECT_LE(highest, 56);

    screen.theme().setReduceMotion(true);
    column->setProperty("more", false);
    screen.until([&] { return column->implicitHeight() == 28; });
}

} // namespace
} // namespace tallyglass
