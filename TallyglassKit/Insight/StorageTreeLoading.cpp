#include "TallyglassKit/Insight/StorageTreeLoading.h"

#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Insight/StorageTreeBuilder.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tallyglass {

StorageTree loadStorageTree(BackupStore& store, const Comparison& comparison,
                            const std::optional<ChangeFilter>& filter, const std::stop_token& stop) {
    constexpr std::int64_t mostReserved = 4'000'000; // the counters of a file may say anything
    StorageTree::Builder builder(
        static_cast<std::size_t>(std::clamp<std::int64_t>(comparison.totalChanges(), 0, mostReserved)));
    ChangePages pages(store, comparison);
    for (auto page = pages.next(stop); !page.empty(); page = pages.next(stop))
        for (const ChangeRecord& row : page)
            if (!filter || filter->keeps(row))
                builder.add(row);
    return std::move(builder).finish();
}

} // namespace tallyglass
