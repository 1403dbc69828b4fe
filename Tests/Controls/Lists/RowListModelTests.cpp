#include "Tallyglass/Controls/Lists/RowListModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>

namespace tallyglass {
namespace {

QVariantList numbers(int count) {
    QVariantList list;
    for (int i = 0; i < count; ++i)
        list.append(i);
    return list;
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
