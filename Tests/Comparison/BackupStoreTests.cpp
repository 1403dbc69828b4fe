#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace tallyglass;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace {

using Kind = ChangeKind;
constexpr auto noKinds = std::nullopt;
constexpr auto noSearch = std::nullopt;

ChangeRecord change(const std::string& comparisonID, const std::string& path, Kind kind = Kind::added,
                    std::optional<std::int64_t> size = {}, std::optional<std::int64_t> sizeDelta = {}) {
    return {std::nullopt, comparisonID, path, kind, !size, size, sizeDelta, std::nullopt};
}

std::vector<std::string> paths(const std::vector<ChangeRecord>& changes) {
    std::vector<std::string> result;
    for (const ChangeRecord& change : changes)
        result.push_back(change.path);
    return result;
}

class BackupStoreTest : public testing::Test {
protected:
    Comparison begin(const std::string& to, std::optional<Date> toDate = {}, Date startedAt = {}) {
        return store.beginComparison(Comparison("/a", to, {}, toDate, 0, "pst|dall|i", startedAt));
    }
    void append(const std::string& id, const std::vector<ChangeRecord>& changes) {
        store.appendChanges(changes, id);
    }
    std::vector<std::string> find(const std::string& text) { return paths(store.searchPaths(text, 100)); }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
    Date now = dateSince1970(1'700'000'000.125);
    BackupStore store{file, [this] { return now; }};
};

TEST_F(BackupStoreTest, startsAComparisonCleanWhateverWasThere) {
    Comparison given("/a", "/b", dateSince1970(10), dateSince1970(20.5), 3, "pst|d3|i", dateSince1970(30));
    store.beginComparison(given);
    append(given.id, {change(given.id, "/x/old")});
    store.finishComparison(given.id, std::nullopt);
    given.startedAt = dateSince1970(40.001);
    given.isPartial = false;
    given.completedAt = now;
    given.errorMessage = "left over";
    given.addedCount = given.bytesRemoved = 7;

    const auto started = store.beginComparison(given);

    EXPECT_EQ(started, Comparison("/a", "/b", given.fromDate, given.toDate, 3, "pst|d3|i", given.startedAt));
    EXPECT_EQ(store.comparison(given.id), started);
    EXPECT_EQ(store.changeCount(given.id), 0);
    EXPECT_THAT(find("old"), IsEmpty());
}

TEST_F(BackupStoreTest, findsOnlyFinishedComparisonsInTheCache) {
    const auto options = CompareOptions::fast();
    const auto id = begin("/b").id;

    EXPECT_EQ(store.completedComparison("/a", "/b", options), std::nullopt);
    store.finishComparison(id, "Cancelled");
    EXPECT_EQ(store.completedComparison("/a", "/b", options), std::nullopt);
    EXPECT_EQ(store.comparison(id)->errorMessage, "Cancelled");
    EXPECT_EQ(store.comparison(id)->completedAt, now);

    store.finishComparison(id, std::nullopt);
    const auto found = store.completedComparison("/a", "/b", options);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->errorMessage, std::nullopt);
    EXPECT_EQ(store.completedComparison("/a", "/b", CompareOptions::thorough()), std::nullopt);
}

TEST_F(BackupStoreTest, listsTheComparisonStartedLastFirst) {
    begin("/1", {}, dateSince1970(1));
    begin("/3", {}, dateSince1970(3));
    begin("/2", {}, dateSince1970(2));

    std::vector<std::string> order;
    for (const Comparison& comparison : store.allComparisons())
        order.push_back(comparison.toPath);
    EXPECT_THAT(order, ElementsAre("/3", "/2", "/1"));
}

TEST_F(BackupStoreTest, countsTheRowsOfEachBatch) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/x", Kind::added, 100), change(id, "/y", Kind::added)});
    append(id, {change(id, "/z", Kind::removed, 30), change(id, "/m", Kind::modified, 10, -5),
                change(id, "/n", Kind::modified, 10, 4), change(id, "/o", Kind::modified)});

    const auto stored = store.comparison(id);

    EXPECT_EQ(stored->addedCount, 2);
    EXPECT_EQ(stored->removedCount, 1);
    EXPECT_EQ(stored->modifiedCount, 3);
    EXPECT_EQ(stored->bytesAdded, 104);
    EXPECT_EQ(stored->bytesRemoved, 35);
    EXPECT_EQ(store.changeCount(id), 6);
}

TEST_F(BackupStoreTest, storesABatchAsAWhole) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/kept", Kind::added, 1)});

    EXPECT_THROW(append(id, {change(id, "/lost", Kind::added, 1), change("nowhere", "/stray")}),
                 DatabaseError);

    EXPECT_THAT(paths(store.changes(id, noKinds, noSearch, 10, 0)), ElementsAre("/kept"));
    EXPECT_THAT(find("lost"), IsEmpty());
    EXPECT_EQ(store.comparison(id)->addedCount, 1);
}

TEST_F(BackupStoreTest, putsRowsWhereTheyBelongAndCountsThemWhereTold) {
    const auto id = begin("/b").id;

    append("nowhere", {change(id, "/x")});

    EXPECT_EQ(store.changeCount(id), 1);
    EXPECT_EQ(store.comparison(id)->addedCount, 0);
}

TEST_F(BackupStoreTest, givesRowsBackAsTheyWere) {
    const auto id = begin("/b").id;
    const ChangeRecord full(std::nullopt, id, "/Users/jo/Ärger \"x\"'%_.txt", Kind::modified, false,
                            std::numeric_limits<std::int64_t>::max(),
                            std::numeric_limits<std::int64_t>::min(),
                            std::vector<std::string>{"size", "mode"});
    ChangeRecord bare = change(id, "", Kind::removed);
    bare.differences = "";
    append(id, {full, bare});

    auto rows = store.changes(id, noKinds, noSearch, -1, 0);

    ASSERT_EQ(rows.size(), 2U);
    EXPECT_TRUE(rows[0].id && rows[1].id && rows[0].id != rows[1].id);
    rows[0].id.reset();
    rows[1].id.reset();
    EXPECT_THAT(rows, ElementsAre(bare, full));
}

TEST_F(BackupStoreTest, numbersRowsInTheOrderOfTheirBatchWhateverItsLength) {
    const auto id = begin("/b").id;
    for (const std::int64_t count : {0, 1, 109, 123}) {
        std::vector<ChangeRecord> batch;
        for (std::int64_t row = 0; row < count; ++row)
            batch.push_back(change(id, fmt::format("/{}", 1000 + row), Kind::added, row));
        const auto next = store.changeCount(id) + 1;
        append(id, batch);

        auto number = next;
        for (ChangeRecord& stored : batch)
            stored.id = number++;
        EXPECT_THAT(store.changes(id, noKinds, noSearch, -1, 0), IsSupersetOf(batch));
    }
    EXPECT_EQ(store.comparison(id)->addedCount, 233);
}

TEST_F(BackupStoreTest, readsRowsInTheOrderOfTheirPathsAPageAtATime) {
    const auto id = begin("/b").id;
    const auto other = begin("/c").id;
    append(id, {change(id, "/c"), change(id, "/a"), change(id, "/d"), change(id, "/b")});
    append(other, {change(other, "/other")});
    const auto page = [&](std::int64_t limit, std::int64_t offset) {
        return paths(store.changes(id, noKinds, noSearch, limit, offset));
    };

    EXPECT_THAT(page(2, 1), ElementsAre("/b", "/c"));
    EXPECT_THAT(page(2, 3), ElementsAre("/d"));
    EXPECT_THAT(page(2, 4), IsEmpty());
    EXPECT_THAT(page(0, 0), IsEmpty());
    EXPECT_THAT(page(-1, -1), ElementsAre("/a", "/b", "/c", "/d"));
    EXPECT_THAT(store.changes("nowhere", noKinds, noSearch, 10, 0), IsEmpty());
}

TEST_F(BackupStoreTest, filtersRowsByKindAndPartOfThePath) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/axb", Kind::added), change(id, "/A_B", Kind::removed),
                change(id, "/mid dle", Kind::modified)});
    const auto rows = [&](std::optional<std::set<Kind>> kinds, std::optional<std::string> search) {
        return paths(store.changes(id, kinds, search, 10, 0));
    };

    EXPECT_THAT(rows(std::set{Kind::added, Kind::modified}, noSearch), ElementsAre("/axb", "/mid dle"));
    EXPECT_EQ(rows(std::set<Kind>{}, noSearch).size(), 3U);
    EXPECT_THAT(rows(noKinds, "a_b"), ElementsAre("/A_B", "/axb"));
    EXPECT_EQ(rows(noKinds, " \t ").size(), 3U);
    EXPECT_THAT(rows(noKinds, "mid "), ElementsAre("/mid dle"));
    EXPECT_THAT(rows(noKinds, "dle "), IsEmpty());
    EXPECT_THAT(rows(std::set{Kind::removed}, "a_b"), ElementsAre("/A_B"));
}

TEST_F(BackupStoreTest, sumsUpFoldersByTheAmountOfTheirChange) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/up/1", Kind::added, 10), change(id, "/up/2", Kind::modified, 500, 5),
                change(id, "/down/1", Kind::removed, 40, -40), change(id, "/none/1"), change(id, "/none/2")});

    EXPECT_THAT(store.rollups(id, 10),
                ElementsAre(DirectoryRollup{"/down", 1, -40}, DirectoryRollup{"/up", 2, 15},
                            DirectoryRollup{"/none", 2, 0}));
    EXPECT_EQ(store.rollups(id, 1).size(), 1U);
}

TEST_F(BackupStoreTest, listsRowsByPathSizeOrName) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/z/b", Kind::added, 40), change(id, "/none"),
                change(id, "/grown", Kind::modified, 500, 5), change(id, "/z/a/", Kind::removed, 40, -40),
                change(id, "/least", Kind::modified, 0, std::numeric_limits<std::int64_t>::min())});
    const auto first = [&](ChangeOrder order, std::int64_t limit) {
        return paths(store.changes(id, order, limit));
    };

    EXPECT_THAT(first(ChangeOrder::size, 4), ElementsAre("/least", "/z/a/", "/z/b", "/grown"));
    EXPECT_THAT(first(ChangeOrder::name, 4), ElementsAre("/z/a/", "/z/b", "/grown", "/least"));
    EXPECT_THAT(first(ChangeOrder::path, -1), ElementsAre("/grown", "/least", "/none", "/z/a/", "/z/b"));
    EXPECT_THAT(store.changes("another", ChangeOrder::size, 4), IsEmpty());
}

TEST_F(BackupStoreTest, findsTheFinishedComparisonsOfAPairDeepestFirst) {
    double time = 0;
    const auto finish = [&](std::int64_t depth, const std::string& options, const std::string& to = "/b",
                            std::optional<std::string> error = {}) {
        const Comparison begun("/a", to, {}, {}, depth, options, dateSince1970(++time));
        store.finishComparison(store.beginComparison(begun).id, error);
        return begun.id;
    };
    const auto shallow = finish(2, "pst|d2|i");
    const auto earlier = finish(0, "pst|dall|i");
    const auto later = finish(0, "ps|dall|i");
    const auto deep = finish(12, "pst|d12|i");
    finish(0, "p@|dall|i", "/b", "Cancelled");
    finish(0, "pst|dall|i", "/c");

    std::vector<std::string> found;
    for (const Comparison& comparison : store.completedComparisons("/a", "/b"))
        found.push_back(comparison.id);

    EXPECT_THAT(found, ElementsAre(later, earlier, deep, shallow));
}

TEST_F(BackupStoreTest, tellsAPathsHistoryNewestFirst) {
    const auto undatedA = begin("/undated a").id;
    const auto old = begin("/old", dateSince1970(-5)).id;
    const auto recent = begin("/recent", dateSince1970(200)).id;
    const auto undatedB = begin("/undated b").id;
    for (const auto& id : {undatedA, old, recent, undatedB})
        append(id, {change(id, "/x"), change(id, "/y")});

    std::vector<std::string> order;
    for (const auto& [comparison, row] : store.history("/x")) {
        order.push_back(comparison.toPath);
        EXPECT_EQ(row.path, "/x");
        EXPECT_EQ(row.comparisonID, comparison.id);
    }
    EXPECT_THAT(order, ElementsAre("/recent", "/old", "/undated a", "/undated b"));
}

TEST_F(BackupStoreTest, searchesWordsByTheirBeginnings) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/My Documents/report.txt"), change(id, "/my-doc_2.TXT"), change(id, "/Über/x")});

    EXPECT_THAT(find("My Doc.txt"),
                testing::UnorderedElementsAre("/My Documents/report.txt", "/my-doc_2.TXT"));
    EXPECT_THAT(find("txt REP"), ElementsAre("/My Documents/report.txt"));
    EXPECT_THAT(find("ocuments"), IsEmpty());
    EXPECT_THAT(find("übe"), ElementsAre("/Über/x"));
    EXPECT_EQ(store.searchPaths("my", 1).size(), 1U);
}

TEST_F(BackupStoreTest, takesSearchTextForWordsAndNeverForASyntax) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/or/not/near")});

    EXPECT_THAT(find(" \t"), IsEmpty());
    EXPECT_THAT(find("..."), IsEmpty());
    EXPECT_THAT(find("\n"), IsEmpty());
    EXPECT_THAT(find("\"NEAR( OR* ^NOT"), ElementsAre("/or/not/near"));
    std::string many;
    for (int word = 0; word < 5000; ++word)
        many += "or ";
    EXPECT_NO_THROW(find(many));
}

TEST_F(BackupStoreTest, deletesAComparisonWithItsRowsAndSearchEntries) {
    const auto id = begin("/b").id;
    append(id, {change(id, "/gone")});

    store.deleteComparison(id);
    store.deleteComparison(id);

    EXPECT_EQ(store.comparison(id), std::nullopt);
    EXPECT_EQ(store.changeCount(id), 0);
    EXPECT_THAT(find("gone"), IsEmpty());
}

TEST_F(BackupStoreTest, leavesAMissingComparisonMissing) {
    store.finishComparison("nowhere", std::nullopt);

    EXPECT_EQ(store.comparison("nowhere"), std::nullopt);
    EXPECT_THAT(store.allComparisons(), IsEmpty());
}

} // namespace
