#include "TallyglassKit/Comparison/ChangeTree.h"
#include "TallyglassKit/Platform/Text/CanonicalText.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>

namespace tallyglass {

void PrintTo(const DisplayRow& row, std::ostream* stream) {
    *stream << row.indent << " " << row.change->path << (row.isExpanded ? " open" : "")
            << (row.isLoading ? " loading" : "");
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

ChangeRecord file(const std::string& path, std::optional<std::int64_t> size = 1) {
    return {std::nullopt, "c", path, ChangeKind::added, false, size, size, std::nullopt};
}
ChangeRecord metadata(const std::string& path) {
    return {std::nullopt, "c", path, ChangeKind::modified, false, 1, 0, Texts{"mtime"}};
}
/// A folder as listed by comparisons, which isn't a content change itself.
ChangeRecord folder(const std::string& path) {
    return {std::nullopt, "c", path, ChangeKind::modified, true, std::nullopt, std::nullopt, Texts{"mtime"}};
}

/// The visible paths, indented by two spaces per level.
Texts shown(const ChangeTree& tree, bool contentOnly = false, std::string_view search = {}) {
    Texts lines;
    for (const DisplayRow& row : tree.visibleRows(contentOnly, search))
        lines.push_back(std::string(static_cast<std::size_t>(row.indent) * 2, ' ') + row.change->path);
    return lines;
}

void open(ChangeTree& tree, const std::string& path) {
    tree.toggleExpand(*tree.find(path));
}

void fetch(ChangeTree& tree, const std::string& path, const std::vector<ChangeRecord>& rows) {
    ASSERT_TRUE(tree.beginFetch(path));
    tree.fetchSucceeded(path, rows);
}

TEST(ChangeTree, putsAtTheTopWhatHasNoParentAmongTheFirstRows) {
    ChangeTree tree;
    tree.seed({file("/b/z/1"), folder("/a"), folder("/a/x"), file("/a/x/2")});
    EXPECT_THAT(shown(tree), ElementsAre("/a", "/b/z/1"));

    open(tree, "/a");
    open(tree, "/a/x");
    EXPECT_THAT(shown(tree), ElementsAre("/a", "  /a/x", "    /a/x/2", "/b/z/1"));

    fetch(tree, "/b", {folder("/b"), folder("/b/y")}); // later rows are never at the top level
    EXPECT_THAT(shown(tree), ElementsAre("/a", "  /a/x", "    /a/x/2", "/b/z/1"));
    open(tree, "/a");
    EXPECT_THAT(shown(tree), ElementsAre("/a", "/b/z/1"));
}

TEST(ChangeTree, keepsTheFirstRowOfAPathInWhicheverForm) {
    ChangeTree tree;
    tree.seed({folder("/B\u00FCro")});
    open(tree, "/Bu\u0308ro");
    fetch(tree, "/Bu\u0308ro", {file("/Bu\u0308ro/a", 1), file("/B\u00FCro/a", 2), folder("/Bu\u0308ro")});
    EXPECT_EQ(tree.size(), 2u);
    EXPECT_EQ(tree.find("/B\u00FCro/a")->size, 1);
    EXPECT_THAT(shown(tree), ElementsAre("/B\u00FCro", "  /Bu\u0308ro/a"));
    EXPECT_TRUE(tree.isFetched("/B\u00FCro"));
}

TEST(ChangeTree, hidesAFolderOnceItIsKnownToHoldNoContentChange) {
    ChangeTree tree;
    tree.seed({folder("/a"), metadata("/m"), file("/n")});
    EXPECT_THAT(shown(tree, true), ElementsAre("/a", "/n"));

    fetch(tree, "/a", {metadata("/a/m"), folder("/a/b")});
    EXPECT_THAT(shown(tree, true), ElementsAre("/n"));

    fetch(tree, "/a/b", {file("/a/b/c/d")});
    EXPECT_THAT(shown(tree, true), ElementsAre("/a", "/n"));
    for (const char* bearing : {"/a/b/c", "/a/b", "/a", "/"})
        EXPECT_TRUE(tree.isContentBearing(bearing)) << bearing;
    EXPECT_FALSE(tree.isContentBearing("/a/b/c/d"));
}

TEST(ChangeTree, showsSearchHitsFlatAndInOrder) {
    ChangeTree tree;
    tree.seed({folder("/a"), file("/zebra"), metadata("/zephyr")});
    fetch(tree, "/a", {folder("/a/ZE"), file("/a/other")});
    EXPECT_THAT(shown(tree, false, "ze"), ElementsAre("/a/ZE", "/zebra", "/zephyr"));
    EXPECT_THAT(shown(tree, true, "ze"), ElementsAre("/zebra"));
    const auto rows = tree.visibleRows(false, "ze");
    EXPECT_FALSE(rows.at(0).isExpandable);
}

TEST(ChangeTree, tellsWhetherAnOpenedFolderIsToBeFetched) {
    ChangeTree tree;
    tree.seed({folder("/a"), folder("/a/b"), folder("/c"), file("/f")});
    EXPECT_FALSE(tree.toggleExpand(*tree.find("/f")));
    EXPECT_FALSE(tree.toggleExpand(*tree.find("/a"))); // its child is known and queued
    EXPECT_TRUE(tree.isQueued("/a/b"));
    EXPECT_TRUE(tree.toggleExpand(*tree.find("/c")));

    ASSERT_TRUE(tree.beginFetch("/c"));
    EXPECT_FALSE(tree.beginFetch("/c"));
    EXPECT_TRUE(tree.visibleRows(false, "").at(2).isLoading);
    tree.fetchFailed("/c", "no disk");
    EXPECT_FALSE(tree.visibleRows(false, "").at(2).isLoading);
    EXPECT_EQ(*tree.folderError("/c"), "no disk");
    ASSERT_TRUE(tree.beginFetch("/c"));
    EXPECT_EQ(tree.folderError("/c"), nullptr);
    tree.fetchCancelled("/c");
    EXPECT_FALSE(tree.isFetched("/c"));
}

TEST(ChangeTree, queuesAFolderOnceAndHandsOutThreeAtATime) {
    ChangeTree tree;
    tree.seed({folder("/a"), folder("/b"), folder("/c"), folder("/d"), folder("/e")});
    tree.schedulePrefetch(Texts{"/d", "/d"});
    EXPECT_EQ(tree.nextPrefetch(), "/a");
    EXPECT_EQ(tree.nextPrefetch(), "/b");
    EXPECT_EQ(tree.nextPrefetch(), "/c");
    EXPECT_EQ(tree.nextPrefetch(), std::nullopt);

    tree.prefetchEnded();
    ASSERT_TRUE(tree.beginFetch("/d")); // expanded by the user meanwhile
    EXPECT_EQ(tree.nextPrefetch(), "/e");
    tree.prefetchEnded();
    EXPECT_EQ(tree.nextPrefetch(), std::nullopt);
    EXPECT_EQ(tree.prefetchInFlight(), 2);
}

/// A naive implementation that recomputes everything from all rows.
class PlainTree {
public:
    void seed(const std::vector<ChangeRecord>& rows) {
        merge(rows);
        std::set<std::string> paths;
        for (const auto& row : rows)
            paths.insert(canonicalForm(row.path));
        for (const auto& row : rows) {
            if (!paths.contains(canonicalForm(row.parentPath())))
                m_roots.push_back(m_merged.at(canonicalForm(row.path)));
        }
        sort(m_roots);
    }

    void merge(const std::vector<ChangeRecord>& rows) {
        for (const auto& row : rows)
            m_merged.emplace(canonicalForm(row.path), row);
    }

    Texts shown(bool contentOnly, const std::set<std::string>& open, const std::set<std::string>& fetched) {
        std::map<std::string, std::vector<ChangeRecord>> children;
        std::set<std::string> bearing;
        for (const auto& [path, row] : m_merged) {
            children[canonicalForm(row.parentPath())].push_back(row);
            if (!row.isContentChange())
                continue;
            for (std::string above(parentPath(path)); !above.empty() && bearing.insert(above).second;)
                above = std::string(parentPath(above));
        }
        Texts lines;
        std::set<std::string> emitted;
        const std::function<void(std::vector<ChangeRecord>, std::size_t)> walk =
            [&](std::vector<ChangeRecord> rows, std::size_t indent) {
                sort(rows);
                for (const auto& row : rows) {
                    const std::string path = canonicalForm(row.path);
                    if (emitted.contains(path))
                        continue;
                    if (contentOnly && !row.isDirectory && !row.isContentChange())
                        continue;
                    if (contentOnly && row.isDirectory && fetched.contains(path) && !bearing.contains(path))
                        continue;
                    emitted.insert(path);
                    lines.push_back(std::string(indent * 2, ' ') + row.path);
                    if (row.isDirectory && open.contains(path))
                        walk(children[path], indent + 1);
                }
            };
        walk(m_roots, 0);
        return lines;
    }

private:
    static void sort(std::vector<ChangeRecord>& rows) {
        std::ranges::stable_sort(rows, [](const ChangeRecord& left, const ChangeRecord& right) {
            return std::is_lt(compareCanonically(left.path, right.path));
        });
    }

    std::map<std::string, ChangeRecord> m_merged;
    std::vector<ChangeRecord> m_roots;
};

class RandomWalk {
public:
    explicit RandomWalk(unsigned seed) : m_random(seed) {}

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    std::string path() {
        static const Texts names{"a", "b", "\u00E9", "e\u0301", "z.txt", "B"};
        std::string path;
        for (int level = 1 + below(4); level > 0; --level)
            path += "/" + names[static_cast<std::size_t>(below(static_cast<int>(names.size())))];
        return path;
    }

    std::vector<ChangeRecord> rows() {
        std::vector<ChangeRecord> rows;
        for (int count = below(12); count > 0; --count) {
            const int kind = below(3);
            rows.push_back(kind == 0 ? folder(path()) : kind == 1 ? file(path()) : metadata(path()));
        }
        return rows;
    }

private:
    std::mt19937 m_random;
};

TEST(ChangeTree, agreesWithANaiveImplementationOnRandomWalks) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        RandomWalk walk(seed);
        ChangeTree tree;
        PlainTree plain;
        std::set<std::string> open;
        std::set<std::string> fetched;
        const auto first = walk.rows();
        tree.seed(first);
        plain.seed(first);
        for (int step = 0; step < 40; ++step) {
            const std::string path = walk.path();
            switch (walk.below(5)) {
            case 0:
                if (tree.beginFetch(path)) {
                    const auto rows = walk.rows();
                    tree.fetchSucceeded(path, rows);
                    plain.merge(rows);
                    fetched.insert(canonicalForm(path));
                }
                break;
            case 1:
                if (tree.beginFetch(path))
                    walk.below(2) == 0 ? tree.fetchFailed(path, "failed") : tree.fetchCancelled(path);
                break;
            case 2:
                if (const auto folder = tree.nextPrefetch()) {
                    EXPECT_FALSE(tree.isFetched(*folder) || tree.isFetching(*folder));
                    tree.prefetchEnded();
                }
                break;
            default:
                if (const ChangeRecord* row = tree.find(path); row && row->isDirectory) {
                    tree.toggleExpand(*row);
                    const std::string key = canonicalForm(path);
                    if (open.erase(key) == 0)
                        open.insert(key);
                }
            }
            for (const bool contentOnly : {false, true})
                ASSERT_EQ(shown(tree, contentOnly), plain.shown(contentOnly, open, fetched))
                    << "seed " << seed << ", step " << step;
        }
    }
}

} // namespace
} // namespace tallyglass
