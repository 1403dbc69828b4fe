#include "TallyglassKit/Comparison/ChangeFilter.h"

#include <algorithm>
#include <iterator>

namespace tallyglass {

namespace {

std::size_t position(ChangeKind kind) {
    return static_cast<std::size_t>(kind);
}

} // namespace

ChangeFilter::ChangeFilter(bool contentOnly, std::string_view search,
                           const std::optional<std::set<ChangeKind>>& kinds, const UserLocale& locale)
    : m_contentOnly(contentOnly) {
    for (const ChangeKind kind : allChangeKinds)
        m_kinds[position(kind)] = !kinds || kinds->contains(kind);
    if (!search.empty())
        m_search.emplace(search, locale);
}

bool ChangeFilter::keeps(const ChangeRecord& change) const {
    return m_kinds[position(change.kind)] && (!m_contentOnly || change.isContentChange()) &&
           (!m_search || m_search->isContainedIn(change.path));
}

std::vector<ChangeRecord> filtered(std::span<const ChangeRecord> changes, bool contentOnly,
                                   std::string_view search, const std::optional<std::set<ChangeKind>>& kinds,
                                   const UserLocale& locale) {
    const ChangeFilter filter(contentOnly, search, kinds, locale);
    std::vector<ChangeRecord> result;
    std::ranges::copy_if(changes, std::back_inserter(result),
                         [&](const ChangeRecord& change) { return filter.keeps(change); });
    return result;
}

std::int64_t metadataOnlyCount(std::span<const ChangeRecord> changes) {
    return std::ranges::count_if(changes,
                                 [](const ChangeRecord& change) { return !change.isContentChange(); });
}

} // namespace tallyglass
