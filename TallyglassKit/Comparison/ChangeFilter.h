// The filter for loaded rows. Immutable; any thread.

#pragma once

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Text/CaseInsensitiveSearch.h"

#include <bitset>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace tallyglass {

class ChangeFilter {
public:
    /// Keeps rows whose kind is among `kinds` (absent for all kinds, while no kinds at all keep nothing),
    /// whose content changed if `contentOnly`, and whose path contains `search` without regard to case.
    ChangeFilter(bool contentOnly, std::string_view search, const std::optional<std::set<ChangeKind>>& kinds,
                 const UserLocale& locale = UserLocale::current());

    [[nodiscard]] bool keeps(const ChangeRecord& change) const;

private:
    std::bitset<allChangeKinds.size()> m_kinds;
    bool m_contentOnly;
    std::optional<CaseInsensitiveSearch> m_search;
};

/// The changes that a ChangeFilter keeps, in their order.
[[nodiscard]] std::vector<ChangeRecord> filtered(std::span<const ChangeRecord> changes, bool contentOnly,
                                                 std::string_view search,
                                                 const std::optional<std::set<ChangeKind>>& kinds,
                                                 const UserLocale& locale = UserLocale::current());

/// The number of rows that aren't content changes.
[[nodiscard]] std::int64_t metadataOnlyCount(std::span<const ChangeRecord> changes);

} // namespace tallyglass
