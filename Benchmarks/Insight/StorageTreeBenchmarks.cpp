// The tree of a comparison's rows and its layout as a treemap: building it, its memory, reading it from the
// cache, and placing the items of a large folder.

#include "Benchmarks/Comparison/SampleChanges.h"
#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Insight/StorageTreeLoading.h"
#include "TallyglassKit/Insight/Treemap.h"

#include <fmt/format.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace tallyglass::bench {
namespace {

constexpr std::int64_t rowCount = 1'000'000;

using Rows = std::vector<ChangeRecord>;
std::shared_ptr<Rows> rows;

std::shared_ptr<void> prepareRows() {
    return rows = std::make_shared<Rows>(sampleChanges(rowCount, "c"));
}

// ---- storage-tree

double measureBuilding() {
    StorageTree tree;
    const double time = seconds([&] { tree = StorageTree::build(*rows); });
    if (tree.root().changeCount != rowCount)
        throw std::runtime_error("rows are missing");
    return time;
}

double measureSortingPaths() {
    return seconds([] {
        std::vector<std::string> paths;
        for (const ChangeRecord& row : *rows)
            paths.push_back(row.path);
        std::ranges::sort(paths);
        keep(paths);
    });
}

const bool addsBuilding = add({
    .name = "storage-tree",
    .work = "a tree of folders from 1,000,000 rows",
    .reference = "copying and sorting their paths",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 2,
    .aim = 1,
    .runs = 5,
    .prepare = prepareRows,
    .measure = measureBuilding,
    .measureReference = measureSortingPaths,
});

// ---- storage-tree-memory

constexpr double megabyte = 1e6;

double measureTreeMemory() {
    const auto inUse = [] {
        const auto memory = mallinfo2();
        return static_cast<double>(memory.uordblks + memory.hblkhd);
    };
    const double before = inUse();
    const StorageTree tree = StorageTree::build(*rows);
    const double after = inUse();
    keep(tree);
    return (after - before) / megabyte;
}

double measurePathBytes() {
    const StorageTree tree = StorageTree::build(*rows);
    double bytes = 0;
    for (StorageTree::Index node = 0; node < tree.nodeCount(); ++node)
        bytes += static_cast<double>(tree.pathOf(node).size());
    return bytes / megabyte;
}

const bool addsMemory = add({
    .name = "storage-tree-memory",
    .work = "what a tree of 1,000,000 rows keeps allocated",
    .reference = "the bytes of the paths of its nodes",
    .unit = "MB",
    .ratio = Ratio::cost,
    .must = 4,
    .aim = 2,
    .runs = 3,
    .prepare = prepareRows,
    .measure = measureTreeMemory,
    .measureReference = measurePathBytes,
});

// ---- storage-tree-load

std::shared_ptr<CachedMillion> cached;

double measureLoading() {
    BackupStore store(cached->file);
    const auto comparison = store.comparison(cached->comparison.id).value();
    StorageTree tree;
    const double time = seconds([&] { tree = loadStorageTree(store, comparison, std::nullopt); });
    if (tree.root().changeCount != CachedMillion::rows)
        throw std::runtime_error("rows are missing");
    return time;
}

/// Seconds that the shell of SQLite needs for the query, with its output thrown away.
double secondsInShell(const std::string& columns, const std::string& rest) {
    const auto command =
        fmt::format("sqlite3 '{}' \"SELECT {} FROM fileChange WHERE comparisonID = '{}' {}\" >/dev/null",
                    cached->file.string(), columns, cached->comparison.id, rest);
    int status = 0;
    const double time = seconds([&] { status = std::system(command.c_str()); });
    if (status != 0)
        throw std::runtime_error("sqlite3 failed");
    return time;
}

std::shared_ptr<void> prepareCached() {
    return cached = CachedMillion::shared();
}

const bool addsLoading = add({
    .name = "storage-tree-load",
    .work = "the tree of 1,000,000 cached rows",
    .reference = "their paths and sizes printed by the sqlite3 shell",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 2.5,
    .aim = 1.5,
    .runs = 5,
    .prepare = prepareCached,
    .measure = measureLoading,
    .measureReference = [] { return secondsInShell("path, size, sizeDelta", "ORDER BY path"); },
});

// ---- largest-changes

constexpr std::int64_t largestCount = 100;

double measureLargest() {
    double time = 0;
    std::vector<ChangeRecord> largest;
    time = seconds([&] {
        BackupStore store(cached->file);
        largest = store.changes(cached->comparison.id, ChangeOrder::size, largestCount);
    });
    if (std::ssize(largest) != largestCount)
        throw std::runtime_error("rows are missing");
    return time;
}

const bool addsLargest = add({
    .name = "largest-changes",
    .work = "the largest 100 of 1,000,000 cached rows",
    .reference = "the same query in the sqlite3 shell",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.2,
    .aim = 1.0,
    .runs = 5,
    .prepare = prepareCached,
    .measure = measureLargest,
    .measureReference =
        [] {
            return secondsInShell("*",
                                  "ORDER BY MAX(COALESCE(sizeDelta, size, 0), -COALESCE(sizeDelta, size, 0)) "
                                  "DESC, path LIMIT 100");
        },
});

// ---- treemap-layout

constexpr std::size_t itemCount = 20'000;

struct Items {
    std::vector<TreemapItem> items;
    std::vector<double> values;

    Items() {
        std::mt19937 random(5);
        std::lognormal_distribution sizes(10.0, 3.0);
        for (std::size_t index = 0; index < itemCount; ++index) {
            values.push_back(sizes(random));
            items.push_back({fmt::format("/Users/sample/Documents/Item {}", index),
                             fmt::format("Item {}", index), values.back()});
        }
    }
};
std::shared_ptr<Items> items;

double measureLayout() {
    std::vector<TreemapTile> tiles;
    const double time = seconds([&] { tiles = Treemap::layout(items->items, {0, 0, 1200, 800}); });
    if (tiles.size() != itemCount)
        throw std::runtime_error("tiles are missing");
    return time;
}

double measureSortingValues() {
    return seconds([] {
        auto values = items->values;
        std::ranges::sort(values);
        keep(values);
    });
}

const bool addsLayout = add({
    .name = "treemap-layout",
    .work = "the tiles of 20,000 items in no order",
    .reference = "sorting their values",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 4,
    .aim = 2,
    .runs = 31,
    .prepare = []() -> std::shared_ptr<void> { return items = std::make_shared<Items>(); },
    .measure = measureLayout,
    .measureReference = measureSortingValues,
});

} // namespace
} // namespace tallyglass::bench
