// Rows mostly come in the order of their paths, and then share most of their folders with the row before:
// only what differs is looked up, in a hash table by parent and name, which makes any other order right too.
// A row is counted at its own node only; as parents are created before their children, one pass from the last
// node to the first then adds up the folders.

#include "TallyglassKit/Insight/StorageTreeBuilder.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

namespace tallyglass {

namespace {

using Index = StorageTree::Index;

constexpr std::size_t firstTableSize = 1024; // a power of two, as all sizes are

std::int64_t signedChange(const ChangeRecord& row) {
    switch (row.kind) {
    case ChangeKind::added:
        return row.size.value_or(0);
    case ChangeKind::removed:
        return saturatingNegation(row.size.value_or(0));
    case ChangeKind::modified:
        break;
    }
    return row.sizeDelta.value_or(0);
}

std::uint32_t hashOf(Index parent, std::string_view name) {
    const auto hash =
        (std::hash<std::string_view>()(name) ^ parent) * 0x9E3779B97F4A7C15U; // 2^64 / golden ratio
    return static_cast<std::uint32_t>(hash >> 32U);
}

} // namespace

void StorageTree::Builder::add(const ChangeRecord& row) {
    if (m_drafts.empty())
        m_drafts.emplace_back();
    Draft& draft = m_drafts[nodeFor(row.path)];
    const auto change = signedChange(row);
    if (change >= 0)
        draft.gained = saturatingSum(draft.gained, change);
    else
        draft.lost = saturatingSum(draft.lost, saturatingNegation(change));
    ++draft.changeCount;
}

Index StorageTree::Builder::nodeFor(std::string_view path) {
    const std::string_view previous = m_previousPath;
    const auto common = static_cast<std::size_t>(std::ranges::mismatch(path, previous).in1 - path.begin());
    const auto isShared = [&](const Step& step) {
        return step.end <= common && (step.end == path.size() || path[step.end] == '/');
    };
    while (!m_previousSteps.empty() && !isShared(m_previousSteps.back()))
        m_previousSteps.pop_back();
    m_previousPath.replace(common, previous.npos, path.substr(common));

    Step last = m_previousSteps.empty() ? Step() : m_previousSteps.back();
    while (true) {
        const auto start = path.find_first_not_of('/', last.end);
        if (start == path.npos)
            return last.node;
        last.end = std::min(path.find('/', start), path.size());
        last.node = child(last.node, path.substr(start, last.end - start));
        m_previousSteps.push_back(last);
    }
}

/// The child with that name, created if there is none.
Index StorageTree::Builder::child(Index parent, std::string_view name) {
    if (m_table.size() <= 2 * m_drafts.size())
        growTable();
    const auto hash = hashOf(parent, name);
    const std::size_t mask = m_table.size() - 1;
    auto slot = hash & mask;
    for (; m_table[slot] != 0; slot = (slot + 1) & mask)
        if (const Draft& draft = m_drafts[m_table[slot]];
            draft.hash == hash && draft.parent == parent && nameOf(draft) == name)
            return m_table[slot];

    if (m_drafts.size() >= std::numeric_limits<Index>::max())
        throw Error("The comparison has too many paths to show.");
    m_table[slot] = static_cast<Index>(m_drafts.size());
    m_drafts.push_back({.nameStart = m_names.size(),
                        .nameLength = static_cast<std::uint32_t>(name.size()),
                        .hash = hash,
                        .parent = parent});
    m_names += name;
    return m_table[slot];
}

std::string_view StorageTree::Builder::nameOf(const Draft& draft) const {
    return std::string_view(m_names).substr(draft.nameStart, draft.nameLength);
}

void StorageTree::Builder::growTable() {
    m_table.assign(std::max(firstTableSize, 2 * m_table.size()), 0);
    const std::size_t mask = m_table.size() - 1;
    for (Index index = 1; index < m_drafts.size(); ++index) {
        auto slot = m_drafts[index].hash & mask;
        while (m_table[slot] != 0)
            slot = (slot + 1) & mask;
        m_table[slot] = index;
    }
}

void StorageTree::Builder::sumUp() {
    for (auto index = m_drafts.size(); --index > 0;) {
        const Draft& draft = m_drafts[index];
        Draft& parent = m_drafts[draft.parent];
        parent.gained = saturatingSum(parent.gained, draft.gained);
        parent.lost = saturatingSum(parent.lost, draft.lost);
        parent.changeCount += draft.changeCount;
    }
}

/// The drafts by parent, each folder's in the order of their names: those of draft p from ends[p - 1] to
/// ends[p], of the root from 0.
struct StorageTree::Builder::Families {
    std::vector<Index> ends;
    std::vector<Index> members;
};

StorageTree::Builder::Families StorageTree::Builder::families() const {
    Families result{.ends = std::vector<Index>(m_drafts.size()),
                    .members = std::vector<Index>(m_drafts.size() - 1)};
    for (std::size_t index = 1; index < m_drafts.size(); ++index)
        ++result.ends[m_drafts[index].parent];
    std::exclusive_scan(result.ends.begin(), result.ends.end(), result.ends.begin(), Index(0));
    for (Index index = 1; index < m_drafts.size(); ++index)
        result.members[result.ends[m_drafts[index].parent]++] = index;

    const auto byName = [&](Index index) { return nameOf(m_drafts[index]); };
    Index start = 0;
    for (const Index end : result.ends) {
        const auto family = std::span(result.members).subspan(start, end - start);
        if (!std::ranges::is_sorted(family, {}, byName))
            std::ranges::sort(family, {}, byName);
        start = end;
    }
    return result;
}

StorageTree StorageTree::Builder::finish() && {
    StorageTree tree;
    if (m_drafts.empty())
        return tree;
    m_table = {};
    sumUp();
    const auto [ends, members] = families();

    const auto count = m_drafts.size();
    tree.m_entries.reserve(count + 1);
    tree.m_names.reserve(m_names.size());
    std::vector<Index> order{0}; // the draft of each entry
    std::vector<Index> parents{0};
    order.reserve(count);
    parents.reserve(count);
    for (Index index = 0; index < count; ++index) {
        const Draft& draft = m_drafts[order[index]];
        tree.m_entries.push_back({.gained = draft.gained,
                                  .lost = draft.lost,
                                  .changeCount = draft.changeCount,
                                  .nameStart = tree.m_names.size(),
                                  .parent = parents[index],
                                  .firstChild = static_cast<Index>(order.size())});
        tree.m_names += nameOf(draft);
        const auto start = order[index] == 0 ? 0 : ends[order[index] - 1];
        order.insert(order.end(), members.begin() + start, members.begin() + ends[order[index]]);
        parents.resize(order.size(), index);
    }
    tree.m_entries.push_back({.nameStart = tree.m_names.size(), .firstChild = static_cast<Index>(count)});
    tree.sortChildrenBySize();
    return tree;
}

} // namespace tallyglass
