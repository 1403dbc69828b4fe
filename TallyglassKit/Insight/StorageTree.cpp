#include "TallyglassKit/Insight/StorageTree.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Insight/StorageTreeBuilder.h"
#include "TallyglassKit/Platform/SaturatingArithmetic.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <ranges>
#include <utility>

namespace tallyglass {

StorageTree StorageTree::build(std::span<const ChangeRecord> rows) {
    Builder builder(rows.size());
    for (const ChangeRecord& row : rows)
        builder.add(row);
    return std::move(builder).finish();
}

StorageTree::Node StorageTree::root() const {
    return isEmpty() ? Node{.path = std::string(rootPath), .name = std::string(rootPath)} : nodeAt(0);
}

std::optional<StorageTree::Node> StorageTree::node(std::string_view path) const {
    const auto index = find(path);
    return index ? std::optional(nodeAt(*index)) : std::nullopt;
}

std::vector<StorageTree::Node> StorageTree::children(std::string_view path) const {
    const auto index = find(path);
    return index ? nodesAt(childrenOf(*index)) : std::vector<Node>();
}

std::vector<StorageTree::Node> StorageTree::sizedChildren(std::string_view path) const {
    const auto index = find(path);
    return index ? nodesAt(sizedChildrenOf(*index)) : std::vector<Node>();
}

std::int64_t StorageTree::unsizedChildCount(std::string_view path) const {
    const auto index = find(path);
    return index ? std::ssize(childrenOf(*index)) - std::ssize(sizedChildrenOf(*index)) : 0;
}

std::map<std::string, StorageTree::Node> StorageTree::sizedChildrenByPath(std::string_view path) const {
    std::map<std::string, Node> result;
    for (Node& node : sizedChildren(path))
        result.emplace(node.path, std::move(node));
    return result;
}

std::vector<StorageTree::Node> StorageTree::breadcrumb(std::string_view path) const {
    std::vector<Node> result{root()};
    std::optional<Index> index;
    if (!isEmpty())
        index = 0;
    for (const auto component : std::views::split(path, '/')) {
        if (component.empty())
            continue;
        if (index)
            index = child(*index, std::string_view(component.begin(), component.end()));
        if (!index)
            break;
        result.push_back(nodeAt(*index));
    }
    return result;
}

std::optional<StorageTree::Index> StorageTree::find(std::string_view path) const {
    if (isEmpty() || !path.starts_with('/'))
        return std::nullopt;
    std::optional<Index> found = 0;
    if (path == rootPath)
        return found;
    while (found && !path.empty()) {
        path.remove_prefix(1);
        const auto name = path.substr(0, path.find('/'));
        found = child(*found, name);
        path.remove_prefix(name.size());
    }
    return found;
}

/// No name is empty, so an empty one isn't found.
std::optional<StorageTree::Index> StorageTree::child(Index folder, std::string_view name) const {
    const auto end = m_entries[folder + 1].firstChild;
    const auto candidates = std::views::iota(m_entries[folder].firstChild, end);
    const auto found =
        std::ranges::lower_bound(candidates, name, {}, [&](Index index) { return nameOf(index); });
    if (found == candidates.end() || nameOf(*found) != name)
        return std::nullopt;
    return *found;
}

std::optional<StorageTree::Index> StorageTree::parentOf(Index node) const {
    return node == 0 ? std::nullopt : std::optional(m_entries[node].parent);
}

std::span<const StorageTree::Index> StorageTree::childrenOf(Index node) const {
    const auto first = m_entries[node].firstChild;
    return std::span(m_bySize).subspan(first, m_entries[node + 1].firstChild - first);
}

std::span<const StorageTree::Index> StorageTree::sizedChildrenOf(Index node) const {
    const auto all = childrenOf(node);
    const auto isSized = [&](Index index) { return magnitudeOf(index) > 0; };
    return all.first(static_cast<std::size_t>(std::ranges::partition_point(all, isSized) - all.begin()));
}

std::string_view StorageTree::nameOf(Index node) const {
    if (node == 0)
        return rootPath;
    const auto start = m_entries[node].nameStart;
    return std::string_view(m_names).substr(start, m_entries[node + 1].nameStart - start);
}

std::string StorageTree::pathOf(Index node) const {
    if (node == 0)
        return std::string(rootPath);
    std::size_t length = 0;
    for (Index index = node; index != 0; index = m_entries[index].parent)
        length += 1 + nameOf(index).size();
    std::string path(length, '/');
    for (Index index = node; index != 0; index = m_entries[index].parent) {
        const auto name = nameOf(index);
        length -= name.size();
        path.replace(length, name.size(), name);
        --length;
    }
    return path;
}

std::int64_t StorageTree::magnitudeOf(Index node) const {
    return saturatingSum(m_entries[node].gained, m_entries[node].lost);
}

std::int64_t StorageTree::netBytesOf(Index node) const {
    return m_entries[node].gained - m_entries[node].lost; // neither is negative
}

StorageTree::Node StorageTree::nodeAt(Index index) const {
    return {.path = pathOf(index),
            .name = std::string(nameOf(index)),
            .magnitude = magnitudeOf(index),
            .netBytes = netBytesOf(index),
            .changeCount = changeCountOf(index),
            .isFile = isFile(index)};
}

std::vector<StorageTree::Node> StorageTree::nodesAt(std::span<const Index> indexes) const {
    std::vector<Node> nodes;
    nodes.reserve(indexes.size());
    for (const Index index : indexes)
        nodes.push_back(nodeAt(index));
    return nodes;
}

void StorageTree::sortChildrenBySize() {
    m_bySize.resize(nodeCount());
    std::iota(m_bySize.begin(), m_bySize.end(), Index(0));
    for (std::size_t folder = 0; folder < nodeCount(); ++folder) {
        const auto first = m_entries[folder].firstChild;
        const auto children = std::span(m_bySize).subspan(first, m_entries[folder + 1].firstChild - first);
        if (children.size() > 1) // siblings are numbered by name
            std::ranges::sort(children, std::greater(),
                              [&](Index index) { return std::pair(magnitudeOf(index), ~index); });
    }
}

} // namespace tallyglass
