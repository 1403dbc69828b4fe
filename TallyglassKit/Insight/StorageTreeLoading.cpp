#include "TallyglassKit/Insight/StorageTreeLoading.h"

#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Insight/StorageTreeBuilder.h"

#include <utility>

namespace tallyglass {

StorageTree loadStorageTree(BackupStore& store, const Comparison& comparison,
                            const std::optional<ChangeFilter>& filter, const std::stop_token& stop) {
    StorageTree::Builder builder;
    ChangePages pages(store, comparison);
    for (auto page = pages.next(stop); !page.empty(); page = pages.next(stop))
        for (const ChangeRecord& row : page)
            if (!filter || filter->keeps(row))
                builder.add(row);
    return std::move(builder).finish();
}

} // namespace tallyglass
