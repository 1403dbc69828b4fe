#include "Tallyglass/Screens/BackupChanges/ChangeTreeListModel.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <random>

namespace tallyglass {
namespace {

using testing::ElementsAre;

ChangeRecord change(const std::string& path, ChangeKind kind = ChangeKind::added) {
    return {std::nullopt, SharedText("c"), path, kind, path.ends_with('d'), 10, std::nullopt, std::nullopt};
}

class ChangesList : public testing::Test {
protected:
    void show(bool contentOnly = true, std::string_view search = {}) {
        rows = tree.visibleRows(contentOnly, search);
        model.setRows(rows, tree);
    }
    [[nodiscard]] ChangeTreeRow rowAt(int row) const {
        return model.index(row).data(Qt::UserRole).value<ChangeTreeRow>();
    }
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> result;
        for (int row = 0; row < model.rowCount(); ++row)
            result.push_back(std::string(static_cast<std::size_t>(rowAt(row).indent), ' ') +
                             rowAt(row).change.path.toStdString());
        return result;
    }

    ChangeTree tree;
    std::vector<DisplayRow> rows;
    ChangeTreeListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy insertions{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removals{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy differences{&model, &QAbstractItemModel::dataChanged};
};

TEST_F(ChangesList, tellsOfTheRowsThatAnOpenedFolderBrings) {
    tree.seed({change("/ad"), change("/ad/x"), change("/ad/y"), change("/b")});
    show();
    insertions.clear();

    tree.toggleExpand(*tree.find("/ad"));
    show();

    EXPECT_THAT(lines(), ElementsAre("/ad", " /ad/x", " /ad/y", "/b"));
    ASSERT_EQ(insertions.count(), 1);
    EXPECT_EQ(insertions[0][1].toInt(), 1);
    EXPECT_EQ(insertions[0][2].toInt(), 2);
    EXPECT_EQ(removals.count(), 0);
    EXPECT_EQ(differences.count(), 1); // the folder is open now
    EXPECT_EQ(rowAt(0).disclosureLabel, "Collapse folder");
}

TEST_F(ChangesList, saysWhatAFolderIsDoing) {
    tree.seed({change("/ad"), change("/b")});
    show();
    EXPECT_EQ(rowAt(0).disclosureLabel, "Expand folder");
    EXPECT_FALSE(rowAt(1).isExpandable);

    tree.toggleExpand(*tree.find("/ad"));
    tree.beginFetch("/ad");
    show();
    EXPECT_TRUE(rowAt(0).isLoading);

    tree.fetchFailed("/ad", "tmutil: gone");
    show();
    EXPECT_FALSE(rowAt(0).isLoading);
    EXPECT_EQ(rowAt(0).error, "tmutil: gone");
}

TEST_F(ChangesList, knowsWhichRowStandsInWhich) {
    tree.seed({change("/ad"), change("/ad/bd"), change("/ad/bd/x"), change("/ad/y"), change("/z")});
    tree.toggleExpand(*tree.find("/ad"));
    tree.toggleExpand(*tree.find("/ad/bd"));
    show();
    ASSERT_THAT(lines(), ElementsAre("/ad", " /ad/bd", "  /ad/bd/x", " /ad/y", "/z"));

    EXPECT_EQ(model.parentOf(3), 0);
    EXPECT_EQ(model.parentOf(2), 1);
    EXPECT_EQ(model.parentOf(4), std::nullopt);
    EXPECT_EQ(model.firstChildOf(1), 2);
    EXPECT_EQ(model.firstChildOf(3), std::nullopt);
    EXPECT_EQ(model.firstChildOf(4), std::nullopt);
}

TEST_F(ChangesList, endsWithTheTwoThousandthRow) {
    std::vector<ChangeRecord> many;
    for (int file = 0; file <= ChangeTreeListModel::rowLimit; ++file)
        many.push_back(change(fmt::format("/{}", 10'000 + file)));
    tree.seed(many);
    show();
    EXPECT_EQ(rows.size(), 2'001u);
    EXPECT_EQ(model.rowCount(), 2'000);
}

TEST_F(ChangesList, forgetsTheRowsOfATreeThatHasGone) {
    tree.seed({change("/a"), change("/b")});
    show();
    tree.reset();
    tree.seed({change("/b", ChangeKind::removed), change("/c")});
    show();
    EXPECT_THAT(lines(), ElementsAre("/b", "/c"));
    EXPECT_EQ(rowAt(0).change.label, "Removed, b");
    EXPECT_EQ(resets.count(), 0);
}

/// Whatever the user opens, closes and filters, and whatever arrives meanwhile.
TEST_F(ChangesList, isTheVisibleRowsAfterEveryStep) {
    std::mt19937 random(20'261'123); // NOLINT(cert-msc51-cpp): the same walk in each run
    const auto below = [&](std::size_t limit) { return std::size_t{random()} % limit; };
    const auto files = [&](const std::string& folder) {
        std::vector<ChangeRecord> result;
        for (std::size_t count = below(5); count > 0; --count)
            result.push_back(change(fmt::format("{}/{}{}", folder, below(8), below(2) ? "d" : ""),
                                    below(3) ? ChangeKind::modified : ChangeKind::added));
        return result;
    };
    tree.seed({change("/ad"), change("/bd"), change("/c")});
    bool contentOnly = true;
    std::string search;
    show();

    for (int step = 0; step < 2'000; ++step) {
        const std::size_t what = below(10);
        if (what < 6 && !rows.empty()) {
            const ChangeRecord& picked = *rows[below(rows.size())].change;
            if (tree.toggleExpand(picked) && tree.beginFetch(picked.path)) {
                show(contentOnly, search);
                if (below(4))
                    tree.fetchSucceeded(picked.path, files(picked.path));
                else
                    tree.fetchFailed(picked.path, "no");
            }
        } else if (what == 6) {
            contentOnly = !contentOnly;
        } else if (what == 7) {
            search = search.empty() ? std::to_string(below(8)) : "";
        }
        show(contentOnly, search);

        ASSERT_EQ(static_cast<std::size_t>(model.rowCount()), rows.size());
        for (int row = 0; row < model.rowCount(); ++row) {
            const DisplayRow& expected = rows[static_cast<std::size_t>(row)];
            ASSERT_EQ(rowAt(row).change.path.toStdString(), expected.change->path);
            ASSERT_EQ(rowAt(row).indent, expected.indent);
            ASSERT_EQ(rowAt(row).isExpanded, expected.isExpanded);
            ASSERT_EQ(rowAt(row).isLoading, expected.isLoading);
        }
    }
    EXPECT_EQ(resets.count(), 0);
    EXPECT_GT(model.rowCount(), 10);
}

} // namespace
} // namespace tallyglass
