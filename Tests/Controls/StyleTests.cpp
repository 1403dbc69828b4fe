#include "Tests/Screens/QmlScreen.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using test::QmlScreen;

/// A control over a model that refuses every change, and tells so.
QByteArray refused(const char* control) {
    return QByteArray("Item { id: model; property int value: 1; property int requests: 0;"
                      "function refuse() { requests += 1; valueChanged() } ") +
           control + " }";
}

TEST(CheckBox, showsTheModelsValueAfterARefusal) {
    QmlScreen screen(refused("CheckBox { text: 'Option'; checked: model.value === 1; onToggled: refuse() }"));
    const auto box = screen.tree().get(QAccessible::CheckBox, "Option");

    box.press();
    EXPECT_EQ(screen.root()->property("requests"), 1);
    EXPECT_TRUE(box.isChecked());
    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_Space);
    EXPECT_EQ(screen.root()->property("requests"), 2);
    EXPECT_TRUE(box.isChecked());
}

TEST(SpinBox, showsTheModelsValueAfterARefusal) {
    QmlScreen screen(
        refused("SpinBox { id: box; objectName: 'box'; label: 'Depth'; to: 5; value: model.value;"
                "onValueModified: refuse() }"));
    const auto box = screen.tree().get(QAccessible::SpinBox, "Depth");

    box.invoke(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(box.object()->property("value"), 1);
    screen.key(Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Left, Qt::Key_Right})
        screen.key(key);
    EXPECT_EQ(screen.root()->property("requests"), 4);
    EXPECT_EQ(box.object()->property("value"), 1);
}

TEST(SpinBox, stepsAtAClickAndStopsAtItsEnds) {
    QmlScreen screen("SpinBox { property int steps: 0; label: 'Depth'; to: 1; onValueModified: steps += 1 }");
    auto* box = qobject_cast<QQuickItem*>(screen.root());
    const QPointF plus(box->width() - 10, box->height() / 2);

    screen.click(plus);
    screen.click(plus);

    EXPECT_EQ(box->property("value"), 1);
    EXPECT_EQ(box->property("steps"), 1);
}

TEST(ComboBox, showsTheModelsValueAfterARefusal) {
    QmlScreen screen(refused("ComboBox { label: 'From'; model: ['one', 'two', 'three'];"
                             "currentIndex: parent.value; onActivated: parent.refuse() }"));
    const auto box = screen.tree().get(QAccessible::ComboBox, "From");

    box.invoke(QAccessibleActionInterface::decreaseAction());
    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_End);

    EXPECT_EQ(screen.root()->property("requests"), 2);
    EXPECT_EQ(box.value(), "two");
}

} // namespace
} // namespace tallyglass
