// The cost of merging rows into a folder tree.

#include "Benchmarks/Comparison/SampleChanges.h"
#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Comparison/ChangeTree.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass::bench {
namespace {

constexpr std::int64_t treeRows = 200'000;
constexpr std::int64_t mergedRows = 20'000;

/// The rows of a tree with their folders, and the rows to merge into it: every eleventh folder.
struct Rows {
    std::vector<ChangeRecord> tree;
    std::vector<ChangeRecord> merged;

    Rows() {
        std::string parent;
        std::int64_t folders = 0;
        for (ChangeRecord& change : sampleChanges(treeRows + mergedRows, "c")) {
            if (parent != change.parentPath()) {
                parent = change.parentPath();
                tree.emplace_back(std::nullopt, "c", parent, ChangeKind::modified, true, std::nullopt,
                                  std::nullopt, std::vector<std::string>{"mtime"});
                ++folders;
            }
            (folders % 11 == 5 ? merged : tree).push_back(std::move(change));
        }
    }
};
Rows* rows = nullptr;

double measureMerging() {
    ChangeTree tree;
    tree.seed(rows->tree);
    for (const DisplayRow& row : tree.visibleRows(false, ""))
        tree.toggleExpand(*row.change);
    std::vector<DisplayRow> visible;
    std::vector<ChangeRecord> fresh = rows->merged;
    const double time = seconds([&] {
        tree.merge(std::move(fresh));
        visible = tree.visibleRows(true, "");
    });
    if (visible.size() < static_cast<std::size_t>(mergedRows))
        throw std::runtime_error("rows are missing");
    return time;
}

double measureMergingReference() {
    return seconds([] {
        std::vector<std::string> paths;
        for (const auto* list : {&rows->tree, &rows->merged})
            for (const ChangeRecord& change : *list)
                paths.push_back(change.path);
        std::ranges::sort(paths);
        keep(paths);
    });
}

const bool addsMerging = add({
    .name = "merge-tree",
    .work = "20,000 rows into a tree of 200,000 whose folders are all open, and the rows to show",
    .reference = "copying and sorting all their paths",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 4,
    .aim = 2,
    .runs = 7,
    .prepare = []() -> std::shared_ptr<void> {
        auto result = std::make_shared<Rows>();
        rows = result.get();
        return result;
    },
    .measure = measureMerging,
    .measureReference = measureMergingReference,
});

} // namespace
} // namespace tallyglass::bench
