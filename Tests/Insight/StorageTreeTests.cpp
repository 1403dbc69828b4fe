#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Insight/StorageTreeLoading.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace tallyglass::test {
namespace {

using Kind = ChangeKind;
using Node = StorageTree::Node;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

ChangeRecord row(std::string path, Kind kind = Kind::modified, std::optional<std::int64_t> size = {},
                 std::optional<std::int64_t> delta = {}) {
    return {std::nullopt, "c", std::move(path), kind, false, size, delta, std::nullopt};
}

StorageTree treeOf(const std::vector<ChangeRecord>& rows) {
    return StorageTree::build(rows);
}

std::vector<std::string> pathsOf(const std::vector<Node>& nodes) {
    std::vector<std::string> paths;
    for (const Node& node : nodes)
        paths.push_back(node.path);
    return paths;
}

/// The rules word for word, with a map of all paths.
struct PlainTree {
    std::map<std::string, Node> nodes;
    std::map<std::string, std::set<std::string>> children;

    explicit PlainTree(const std::vector<ChangeRecord>& rows) {
        for (const ChangeRecord& change : rows)
            add(change);
        for (auto& [path, node] : nodes)
            node.isFile = !children.contains(path);
    }

    void add(const ChangeRecord& change) {
        const std::int64_t size = change.size.value_or(0);
        const std::int64_t delta = change.kind == Kind::added     ? size
                                   : change.kind == Kind::removed ? -size
                                                                  : change.sizeDelta.value_or(0);
        std::string path;
        count("/", "/", delta);
        for (std::size_t start = 0; start < change.path.size();) {
            const auto end = std::min(change.path.find('/', start), change.path.size());
            if (const auto name = change.path.substr(start, end - start); !name.empty()) {
                const auto parent = path.empty() ? "/" : path;
                path += "/" + name;
                count(path, name, delta);
                children[parent].insert(path);
            }
            start = end + 1;
        }
    }

    void count(const std::string& path, const std::string& name, std::int64_t delta) {
        Node& node = nodes[path];
        node.path = path;
        node.name = name;
        node.magnitude += std::abs(delta);
        node.netBytes += delta;
        ++node.changeCount;
    }

    [[nodiscard]] std::vector<Node> childrenOf(const std::string& path) const {
        std::vector<Node> result;
        if (const auto found = children.find(path); found != children.end())
            for (const auto& child : found->second)
                result.push_back(nodes.at(child));
        std::ranges::stable_sort(result, std::greater(), &Node::magnitude);
        return result;
    }
};

void expectAgreement(const StorageTree& tree, const PlainTree& plain) {
    ASSERT_EQ(tree.nodeCount(), plain.nodes.size());
    for (const auto& [path, node] : plain.nodes) {
        ASSERT_EQ(tree.node(path), node) << path;
        const auto children = plain.childrenOf(path);
        EXPECT_EQ(tree.children(path), children) << path;
        const auto unsized = std::ranges::count(children, 0, &Node::magnitude);
        EXPECT_EQ(tree.unsizedChildCount(path), unsized) << path;
        EXPECT_EQ(tree.sizedChildren(path), std::vector(children.begin(), children.end() - unsized)) << path;
        const auto trail = tree.breadcrumb(path);
        EXPECT_EQ(trail.front(), tree.root());
        EXPECT_EQ(trail.back(), node);
        const auto index = tree.find(path);
        ASSERT_TRUE(index);
        const auto parent = tree.parentOf(*index);
        ASSERT_EQ(parent.has_value(), path != "/");
        if (parent) {
            EXPECT_EQ(tree.pathOf(*parent), trail[trail.size() - 2].path);
        }
    }
}

TEST(StorageTree, ofNoRowsHasARootWithoutChanges) {
    const StorageTree tree = treeOf({});
    EXPECT_TRUE(tree.isEmpty());
    EXPECT_EQ(tree.root(), (Node{"/", "/", 0, 0, 0, true}));
    EXPECT_EQ(tree.node("/"), std::nullopt);
    EXPECT_THAT(tree.children("/"), IsEmpty());
    EXPECT_THAT(tree.breadcrumb("/a"), ElementsAre(tree.root()));
    EXPECT_EQ(tree.unsizedChildCount("/"), 0);
}

TEST(StorageTree, countsARowAtItsPathAndInAllFoldersAbove) {
    const StorageTree tree = treeOf({row("/a/b/c", Kind::added, 10, 99), row("/a/b", Kind::removed, 4),
                                     row("/a/d", Kind::modified, 50, -7), row("/a/e", Kind::modified, 50),
                                     row("/a/f", Kind::added)});

    EXPECT_EQ(tree.root(), (Node{"/", "/", 21, -1, 5, false}));
    EXPECT_EQ(tree.node("/a/b"), (Node{"/a/b", "b", 14, 6, 2, false}));
    EXPECT_EQ(tree.node("/a/b/c"), (Node{"/a/b/c", "c", 10, 10, 1, true}));
    EXPECT_FALSE(tree.node("/a/d")->grew());
    EXPECT_TRUE(tree.node("/a/e")->grew());
    EXPECT_THAT(pathsOf(tree.children("/a")), ElementsAre("/a/b", "/a/d", "/a/e", "/a/f"));
    EXPECT_THAT(pathsOf(tree.sizedChildren("/a")), ElementsAre("/a/b", "/a/d"));
    EXPECT_EQ(tree.sizedChildrenByPath("/a").at("/a/d").magnitude, 7);
    EXPECT_EQ(tree.unsizedChildCount("/a"), 2);
}

TEST(StorageTree, findsOnlyPathsAsItsNodesHaveThem) {
    const StorageTree tree = treeOf({row("a//b/"), row("/a/b/c"), row(""), row("///")});

    EXPECT_EQ(tree.nodeCount(), 4U);
    EXPECT_EQ(tree.root().changeCount, 4);
    for (const auto* path : {"", "a", "/a/", "//a", "/a//b", "/a/x", "/a/b/c/d", "//"})
        EXPECT_EQ(tree.node(path), std::nullopt) << path;
    EXPECT_THAT(pathsOf(tree.breadcrumb("a//b/x/c")), ElementsAre("/", "/a", "/a/b"));
    EXPECT_THAT(tree.children("/nowhere"), IsEmpty());
}

TEST(StorageTree, saturatesWhateverTheOrderOfTheRows) {
    std::vector<ChangeRecord> rows{row("/a", Kind::modified, {}, least), row("/a", Kind::added, most),
                                   row("/a", Kind::removed, least), row("/b", Kind::removed, most)};
    const StorageTree tree = treeOf(rows);
    EXPECT_EQ(tree.node("/a"), (Node{"/a", "a", most, 0, 3, true}));
    EXPECT_EQ(tree.root().magnitude, most);
    std::ranges::reverse(rows);
    EXPECT_EQ(treeOf(rows).root(), tree.root());
}

TEST(StorageTree, agreesWithItsRulesForRandomRowsInAnyOrder) {
    std::mt19937 random(7);
    const auto below = [&](int bound) { return std::uniform_int_distribution(0, bound - 1)(random); };
    const std::vector<std::string> pieces{"a", "a b", "a.txt", "b", "\xff", "ä", "/", "//", ".", "-"};
    for (int round = 0; round < 300; ++round) {
        std::vector<ChangeRecord> rows;
        for (int count = below(80); count >= 0; --count) {
            std::string path(below(3) ? "/" : "");
            for (int depth = below(6); depth > 0; --depth)
                path += pieces[static_cast<std::size_t>(below(10))] + (below(3) ? "/" : "");
            const auto bytes = [&] {
                return below(4) ? std::optional<std::int64_t>(below(5) * 10) : std::nullopt;
            };
            rows.push_back(row(path, allChangeKinds[static_cast<std::size_t>(below(3))], bytes(), bytes()));
        }
        if (round % 2)
            std::ranges::sort(rows, {}, &ChangeRecord::path);
        expectAgreement(treeOf(rows), PlainTree(rows));
        if (HasFailure())
            return;
    }
}

class LoadStorageTreeTest : public testing::Test {
protected:
    Comparison run(const std::vector<ChangeRecord>& rows) {
        const Comparison begun("/a", "/b", {}, {}, 0, "k", dateSince1970(1e9));
        store.beginComparison(begun);
        std::vector<ChangeRecord> own(rows);
        for (ChangeRecord& change : own)
            change.comparisonID = begun.id;
        store.appendChanges(own, begun.id);
        store.finishComparison(begun.id, std::nullopt);
        return store.comparison(begun.id).value();
    }

    TemporaryFolder folder;
    BackupStore store{folder / "cache.sqlite"};
};

TEST_F(LoadStorageTreeTest, takesAllRowsOrThoseThatTheFilterKeeps) {
    std::vector<ChangeRecord> rows;
    for (std::int64_t index = 0; index < ChangePages::defaultPageSize + 10; ++index)
        rows.push_back(row("/" + std::to_string(index % 100) + "/" + std::to_string(index),
                           allChangeKinds[static_cast<std::size_t>(index % 3)], index, index));
    const auto comparison = run(rows);

    expectAgreement(loadStorageTree(store, comparison, std::nullopt), PlainTree(rows));
    const ChangeFilter filter(true, "/7/", std::set{Kind::added});
    std::erase_if(rows, [&](const ChangeRecord& change) { return !filter.keeps(change); });
    expectAgreement(loadStorageTree(store, comparison, filter), PlainTree(rows));
}

TEST_F(LoadStorageTreeTest, failsForAComparisonThatIsGoneAndStops) {
    const auto comparison = run({row("/a")});
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(static_cast<void>(loadStorageTree(store, comparison, {}, source.get_token())), Cancelled);
    store.deleteComparison(comparison.id);
    EXPECT_THROW(static_cast<void>(loadStorageTree(store, comparison, {})), ComparisonChanged);
}

} // namespace
} // namespace tallyglass::test
