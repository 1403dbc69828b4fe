#include "Tallyglass/Screens/RowListModel.h"
#include "Tests/Screens/QmlScreen.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>

namespace tallyglass {
namespace {

using test::QmlScreen;

QVariantList numbers(int count) {
    QVariantList list;
    for (int i = 0; i < count; ++i)
        list.append(i);
    return list;
}

TEST(Stack, givesItsWidthToAllAndTakesTheirHeight) {
    QmlScreen screen("Item { Stack { objectName: 'stack'; width: 120; spacing: 8\n"
                     "Rectangle { objectName: 'first'; implicitHeight: width / 4 }\n"
                     "Rectangle { visible: false; implicitHeight: 50 }\n"
                     "Stack { objectName: 'inner'; Rectangle { implicitHeight: width / 2 } } } }");
    auto* stack = screen.root()->findChild<QQuickItem*>("stack");
    auto* inner = screen.root()->findChild<QQuickItem*>("inner");
    EXPECT_EQ(stack->height(), 30 + 8 + 60);

    stack->setWidth(200);

    EXPECT_EQ(stack->height(), 50 + 8 + 100) << "at once";
    EXPECT_EQ(inner->y(), 58);
    EXPECT_EQ(inner->width(), 200);
}

TEST(Stack, makesRoomForWhatAppears) {
    QmlScreen screen("Stack { id: stack; property bool more: false; spacing: 8\n"
                     "Rectangle { implicitHeight: 10 }\n"
                     "Rectangle { visible: stack.more; implicitHeight: 20 } }");
    auto* stack = qobject_cast<QQuickItem*>(screen.root());
    EXPECT_EQ(stack->implicitHeight(), 10);

    stack->setProperty("more", true);

    EXPECT_EQ(stack->implicitHeight(), 38);
}

TEST(Reveal, takesNoRoomWhileItIsHidden) {
    QmlScreen screen("Stack { id: stack; property bool more: false; spacing: 8\n"
                     "Rectangle { implicitHeight: 10 }\n"
                     "Reveal { spacing: 8; shown: stack.more; Rectangle { implicitHeight: 20 } }\n"
                     "Rectangle { implicitHeight: 10 } }");
    auto* stack = qobject_cast<QQuickItem*>(screen.root());
    double lowest = 28;
    double highest = 28;
    QObject::connect(stack, &QQuickItem::implicitHeightChanged, [&] {
        lowest = std::min(lowest, stack->implicitHeight());
        highest = std::max(highest, stack->implicitHeight());
    });
    EXPECT_EQ(stack->implicitHeight(), 28);

    stack->setProperty("more", true);
    screen.until([&] { return stack->implicitHeight() == 56; });
    EXPECT_GE(lowest, 28) << "it grows without a step back";
    EXPECT_LE(highest, 56);

    screen.theme().setReduceMotion(true);
    stack->setProperty("more", false);
    EXPECT_EQ(stack->implicitHeight(), 28) << "at once, without motion";
}

TEST(RowListModel, showsALongListInPortions) {
    RowListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);

    model.setRows(numbers(100));
    EXPECT_EQ(model.rowCount(), 40);
    while (model.rowCount() < 100)
        QCoreApplication::processEvents();

    EXPECT_EQ(model.data(model.index(99), Qt::UserRole), 99);
}

TEST(RowListModel, tellsOnlyOfTheRowsThatDiffer) {
    RowListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setRows(numbers(10));
    QList<int> changed;
    int resets = 0;
    QObject::connect(&model, &RowListModel::dataChanged,
                     [&](const QModelIndex& first) { changed.append(first.row()); });
    QObject::connect(&model, &RowListModel::modelReset, [&] { ++resets; });

    QVariantList rows = numbers(8);
    rows[3] = 33;
    model.setRows(rows);

    EXPECT_EQ(changed, QList<int>{3});
    EXPECT_EQ(model.rowCount(), 8);
    EXPECT_EQ(resets, 0);
}

} // namespace
} // namespace tallyglass
