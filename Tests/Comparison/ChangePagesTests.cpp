#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stop_token>

using namespace tallyglass;

namespace {

class ChangePagesTest : public testing::TestWithParam<ChangeOrder> {
protected:
    /// A finished run with these paths, whose sizes are 1, 2 and so on.
    Comparison run(const std::vector<std::string>& paths) {
        const Comparison begun("/a", "/b", {}, {}, 0, "k", dateSince1970(startTime += 0.0014));
        store.beginComparison(begun);
        std::vector<ChangeRecord> rows;
        for (const std::string& path : paths)
            rows.emplace_back(std::nullopt, begun.id, path, ChangeKind::added, false, std::ssize(rows) + 1,
                              std::nullopt, std::nullopt);
        store.appendChanges(rows, begun.id);
        store.finishComparison(begun.id, std::nullopt);
        return store.comparison(begun.id).value();
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
    double startTime = 1e9;
    BackupStore store{file, [this] { return dateSince1970(startTime + 0.0007); }};
};

std::vector<ChangeRecord> allRows(ChangePages pages) {
    std::vector<ChangeRecord> rows;
    for (auto page = pages.next(); !page.empty(); page = pages.next())
        rows.insert(rows.end(), page.begin(), page.end());
    return rows;
}

TEST_P(ChangePagesTest, haveEveryRowOnceInItsOrderWhateverThePagesSize) {
    const auto comparison = run({"/b/x", "/b", "/b/x", "/a", "", "/b.txt", "/b/x", "relative", "/"});
    const auto expected = store.changes(comparison.id, GetParam(), -1);
    ASSERT_EQ(expected.size(), 9U);

    for (const std::int64_t size : {1, 2, 3, 9, 10})
        EXPECT_EQ(allRows(ChangePages(store, comparison, GetParam(), size)), expected) << size;
    EXPECT_EQ(allRows(ChangePages(store, run({}), GetParam())).size(), 0U);
}

TEST_P(ChangePagesTest, failWhenAnotherStoreTouchesTheComparisonBetweenThem) {
    const std::vector<std::function<void(BackupStore&, const Comparison&)>> touches{
        [](BackupStore& other, const Comparison& run) { other.deleteComparison(run.id); },
        [](BackupStore& other, const Comparison& run) { other.beginComparison(run); },
        [&](BackupStore&, const Comparison&) {
            run({"/1", "/2", "/3"});
        },
    };
    BackupStore other(file);
    for (const auto& touch : touches) {
        const auto comparison = run({"/1", "/2", "/3"});
        ChangePages pages(store, comparison, GetParam(), 2);
        ASSERT_EQ(pages.next().size(), 2U);
        touch(other, comparison);
        EXPECT_THROW(static_cast<void>(pages.next()), ComparisonChanged);
        EXPECT_THROW(static_cast<void>(ChangePages(store, comparison, GetParam()).next()), ComparisonChanged);
    }
}

TEST_P(ChangePagesTest, failWhenTheFileBreaksBetweenThem) {
    std::vector<std::string> paths;
    for (int row = 0; row < 2000; ++row)
        paths.push_back(fmt::format("/{:0>2000}", row)); // more than SQLite keeps in memory
    ChangePages pages(store, run(paths), GetParam(), 10);
    ASSERT_EQ(pages.next().size(), 10U);

    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 3);

    EXPECT_THROW(for (auto page = pages.next(); !page.empty();) page = pages.next(), DatabaseError);
}

TEST_P(ChangePagesTest, stopBetweenTwo) {
    ChangePages pages(store, run({"/1", "/2"}), GetParam(), 1);
    std::stop_source source;
    EXPECT_EQ(pages.next(source.get_token()).size(), 1U);
    source.request_stop();
    EXPECT_THROW(static_cast<void>(pages.next(source.get_token())), Cancelled);
}

INSTANTIATE_TEST_SUITE_P(Order, ChangePagesTest, testing::ValuesIn(allChangeOrders),
                         [](const auto& order) { return std::string(rawValue(order.param)); });

} // namespace
