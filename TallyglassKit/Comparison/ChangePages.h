// All rows of a comparison in pages, so that neither a million rows are in memory at once nor other users of
// the store wait for long. One thread at a time; borrows the store.
//
// Each page is a transaction that first checks that the comparison is still the same run: all pages together
// are what one run stored, or reading fails.

#pragma once

#include "TallyglassKit/Comparison/ChangeOrder.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Platform/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <vector>

namespace tallyglass {

class BackupStore;

/// The comparison was deleted or run again while it was read.
class ComparisonChanged : public Error {
public:
    ComparisonChanged() : Error("This comparison was replaced or deleted meanwhile.") {}
};

class ChangePages {
public:
    static constexpr std::int64_t defaultPageSize = 5000;

    /// The rows of `run`, as read from the store. In the order of paths each page continues after the one
    /// before; any other order is found by one long query at the first page.
    ChangePages(BackupStore& store, Comparison run, ChangeOrder order = ChangeOrder::path,
                std::int64_t pageSize = defaultPageSize);

    /// The next rows; none at the end. Throws ComparisonChanged, Cancelled or DatabaseError.
    [[nodiscard]] std::vector<ChangeRecord> next(const std::stop_token& stop = {});

private:
    void check() const;
    [[nodiscard]] std::vector<ChangeRecord> nextByPath();
    [[nodiscard]] std::vector<ChangeRecord> nextByIdentifier();
    [[nodiscard]] std::vector<std::int64_t> identifiers() const;

    BackupStore& m_store;
    const Comparison m_run;
    const ChangeOrder m_order;
    const std::int64_t m_pageSize;

    std::optional<std::int64_t> m_last;                     // row of the previous page
    std::optional<std::vector<std::int64_t>> m_identifiers; // of all rows, in another order than by path
    std::size_t m_read = 0;                                 // of the identifiers
};

} // namespace tallyglass
