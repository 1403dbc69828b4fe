// The rows of one comparison as a tree of folders, with the bytes that changed at and below each of them. An
// immutable value, made once and then only read; any thread. Copies are deep: move it, or share it by
// pointer.
//
// 1. Each path has its own node and one for every ancestor. Paths are absolute: "a//b/" has the node "/a/b".
// 2. Every row counts at its own path and in all folders above, rows of folders too.
// 3. Children are in descending order of their magnitude, equal ones in the order of their names' bytes.
// 4. Sums of bytes saturate, so that they don't depend on the order of the rows.

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct ChangeRecord;

class StorageTree {
public:
    static constexpr std::string_view rootPath = "/";

    struct Node {
        std::string path;
        std::string name;             ///< last component; "/" for the root
        std::int64_t magnitude = 0;   ///< bytes, the sum of absolute changes
        std::int64_t netBytes = 0;    ///< bytes, the signed sum
        std::int64_t changeCount = 0; ///< rows
        bool isFile = true;           ///< has no children in the tree

        [[nodiscard]] bool grew() const { return netBytes >= 0; }

        friend bool operator==(const Node&, const Node&) = default;
    };

    class Builder;

    StorageTree() = default; ///< the tree without rows
    [[nodiscard]] static StorageTree build(std::span<const ChangeRecord> rows);

    /// For a tree without rows, a root without changes.
    [[nodiscard]] Node root() const;
    [[nodiscard]] std::optional<Node> node(std::string_view path) const;
    [[nodiscard]] std::vector<Node> children(std::string_view path) const;
    /// The children whose magnitude isn't 0, which can be drawn, in the same order.
    [[nodiscard]] std::vector<Node> sizedChildren(std::string_view path) const;
    [[nodiscard]] std::int64_t unsizedChildCount(std::string_view path) const;
    [[nodiscard]] std::map<std::string, Node> sizedChildrenByPath(std::string_view path) const;
    /// The nodes from the root to `path`, or as far as there are any.
    [[nodiscard]] std::vector<Node> breadcrumb(std::string_view path) const;
    [[nodiscard]] bool isEmpty() const { return nodeCount() == 0; }
    [[nodiscard]] std::size_t nodeCount() const { return m_entries.empty() ? 0 : m_entries.size() - 1; }

    // The same without copies. An index is less than nodeCount(); the root's is 0.
    using Index = std::uint32_t;

    [[nodiscard]] std::optional<Index> find(std::string_view path) const;
    [[nodiscard]] std::optional<Index> parentOf(Index node) const;
    [[nodiscard]] std::span<const Index> childrenOf(Index node) const;
    [[nodiscard]] std::span<const Index> sizedChildrenOf(Index node) const;
    [[nodiscard]] std::string_view nameOf(Index node) const;
    [[nodiscard]] std::string pathOf(Index node) const;
    [[nodiscard]] std::int64_t magnitudeOf(Index node) const;
    [[nodiscard]] std::int64_t netBytesOf(Index node) const;
    [[nodiscard]] std::int64_t changeCountOf(Index node) const { return m_entries[node].changeCount; }
    [[nodiscard]] bool isFile(Index node) const { return childrenOf(node).empty(); }

private:
    /// Numbered level by level, siblings in the order of their names, so that those of one folder are
    /// adjacent and can be searched by name.
    struct Entry {
        std::int64_t gained = 0; ///< the sum of the positive changes
        std::int64_t lost = 0;   ///< the absolute sum of the negative ones
        std::int64_t changeCount = 0;
        std::size_t nameStart = 0; ///< in m_names; the name ends where that of the next entry starts
        Index parent = 0;
        Index firstChild = 0; ///< the last child is before the first one of the next entry
    };

    [[nodiscard]] Node nodeAt(Index index) const;
    [[nodiscard]] std::vector<Node> nodesAt(std::span<const Index> indexes) const;
    [[nodiscard]] std::optional<Index> child(Index folder, std::string_view name) const;
    void sortChildrenBySize();

    std::vector<Entry> m_entries; // of the nodes, and one past the end
    std::vector<Index> m_bySize;  // the children of each folder, where their entries are, in their order
    std::string m_names;
};

} // namespace tallyglass
