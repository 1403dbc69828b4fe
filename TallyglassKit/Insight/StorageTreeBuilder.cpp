// Rows mostly come in the order of their paths, and then share most of their folders with the row before;
// what differs is mostly a new last child, or near the last. So the children of a folder are a list from the
// last to the first by name, of which a few are looked at. A folder in which that isn't enough has its
// children looked up in a hash table instead, which makes any other order right and quick enough.
//
// A row is counted at its own node only; as parents are created before their children, one pass from the last
// node to the first then adds up the folders.

#include "TallyglassKit/Insight/StorageTreeBuilder.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"

#include <algorithm>
#include <bit>
#include <compare>
#include <functional>
#include <limits>
#include <span>

namespace tallyglass {

namespace {

using Index = StorageTree::Index;

constexpr std::size_t firstTableSize = 1024; // a power of two, as all sizes are
constexpr int siblingsLookedAt = 16;

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

std::size_t hashOf(Index parent, std::string_view name) {
    const auto hash =
        (std::hash<std::string_view>()(name) ^ parent) * 0x9E3779B97F4A7C15U; // 2^64 / golden ratio
    return hash >> 32U;
}

} // namespace

StorageTree::Builder::Builder(std::size_t expectedRows) {
    constexpr std::size_t bytesOfName = 20;
    m_drafts.reserve(expectedRows + expectedRows / 8);
    m_names.reserve(expectedRows * bytesOfName);
}

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
    if (m_drafts[parent].isUnordered)
        return childByTable(parent, name);
    Index next = 0;
    Index sibling = m_drafts[parent].lastChild;
    for (int count = 0; sibling != 0; ++count) {
        const auto order = name <=> nameOf(sibling);
        if (order == 0)
            return sibling;
        if (order > 0)
            break;
        if (count == siblingsLookedAt) {
            m_drafts[parent].isUnordered = true;
            return childByTable(parent, name);
        }
        next = sibling;
        sibling = m_drafts[sibling].previousSibling;
    }
    const Index created = create(parent, name);
    m_drafts[created].previousSibling = sibling;
    (next == 0 ? m_drafts[parent].lastChild : m_drafts[next].previousSibling) = created;
    return created;
}

Index StorageTree::Builder::childByTable(Index parent, std::string_view name) {
    fillTable();
    if (const Index found = m_table[slotFor(parent, name)]; found != 0)
        return found;
    const Index created = create(parent, name); // which the next look-up enters
    m_drafts[created].previousSibling = m_drafts[parent].lastChild;
    m_drafts[parent].lastChild = created;
    return created;
}

Index StorageTree::Builder::create(Index parent, std::string_view name) {
    if (m_drafts.size() >= std::numeric_limits<Index>::max())
        throw Error("The comparison has too many paths to show.");
    m_drafts.push_back({.nameStart = m_names.size(), .parent = parent});
    m_names += name;
    return static_cast<Index>(m_drafts.size() - 1);
}

std::string_view StorageTree::Builder::nameOf(Index draft) const {
    const auto start = m_drafts[draft].nameStart;
    const auto end = draft + 1 < m_drafts.size() ? m_drafts[draft + 1].nameStart : m_names.size();
    return std::string_view(m_names).substr(start, end - start);
}

/// The slot of that child, or the free one for it.
std::size_t StorageTree::Builder::slotFor(Index parent, std::string_view name) const {
    const std::size_t mask = m_table.size() - 1;
    auto slot = hashOf(parent, name) & mask;
    while (m_table[slot] != 0 && (m_drafts[m_table[slot]].parent != parent || nameOf(m_table[slot]) != name))
        slot = (slot + 1) & mask;
    return slot;
}

/// Enters all drafts that aren't in the table.
void StorageTree::Builder::fillTable() {
    if (m_table.size() < 2 * m_drafts.size()) {
        m_table.assign(std::max(firstTableSize, std::bit_ceil(4 * m_drafts.size())), 0);
        m_inTable = 1;
    }
    for (; m_inTable < m_drafts.size(); ++m_inTable)
        m_table[slotFor(m_drafts[m_inTable].parent, nameOf(m_inTable))] = m_inTable;
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

/// Appends the children in the order of their names.
void StorageTree::Builder::appendChildren(Index parent, std::vector<Index>& order) const {
    const auto start = order.size();
    for (Index child = m_drafts[parent].lastChild; child != 0; child = m_drafts[child].previousSibling)
        order.push_back(child);
    const auto children = std::span(order).subspan(start);
    if (m_drafts[parent].isUnordered)
        std::ranges::sort(children, {}, [&](Index child) { return nameOf(child); });
    else
        std::ranges::reverse(children);
}

StorageTree StorageTree::Builder::finish() && {
    StorageTree tree;
    if (m_drafts.empty())
        return tree;
    m_table = {};
    sumUp();

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
        tree.m_names += nameOf(order[index]);
        appendChildren(order[index], order);
        parents.resize(order.size(), index);
    }
    tree.m_entries.push_back({.nameStart = tree.m_names.size(), .firstChild = static_cast<Index>(count)});
    tree.sortChildrenBySize();
    return tree;
}

} // namespace tallyglass
