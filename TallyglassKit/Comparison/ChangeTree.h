// A folder tree built from shallow comparisons: the rows fetched so far, the folders that the user has
// expanded, and the queue of folders to prefetch. Paths are logical paths, equal if they are canonically
// equivalent.
//
// Pure logic, without threads or children. Not thread-safe; pointers to rows are valid until reset().
//
// Invariants: 1. There is one row per path, which is never replaced. 2. The rows in a folder are in the order
// of their paths. 3. A folder is content-bearing exactly if a row below it, at any level, is a content
// change. 4. At most `maxPrefetchConcurrency` folders from nextPrefetch() haven't had their prefetchEnded()
// yet.

#pragma once

#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tallyglass {

/// One line of the list.
struct DisplayRow {
    const ChangeRecord* change = nullptr;
    int indent = 0; ///< nesting level, 0 at the top
    bool isExpandable = false;
    bool isExpanded = false;
    bool isLoading = false; ///< expanded and without rows, while a fetch runs

    friend bool operator==(const DisplayRow&, const DisplayRow&) = default;
};

class ChangeTree {
public:
    static constexpr int maxPrefetchConcurrency = 3;

    /// Adds the rows of the first comparison. Those without a parent among them are the top level, whose
    /// folders are queued for prefetching.
    void seed(std::vector<ChangeRecord> rows);
    /// Adds the rows of a folder's comparison, never to the top level.
    void merge(std::vector<ChangeRecord> rows);
    /// Empties the tree.
    void reset();

    /// The rows of the list; with a search, a flat list.
    [[nodiscard]] std::vector<DisplayRow> visibleRows(bool contentOnly, std::string_view search) const;

    /// Expands or collapses a folder. Returns whether its comparison should be fetched now.
    bool toggleExpand(const ChangeRecord& change);

    // The fetch of one folder: beginFetch(), then one of the others.

    /// False if it is already being fetched.
    bool beginFetch(const std::string& path);
    void fetchSucceeded(const std::string& path, std::vector<ChangeRecord> rows);
    void fetchFailed(const std::string& path, std::string message);
    void fetchCancelled(const std::string& path);

    // The queue of folders to prefetch.

    void schedulePrefetch(std::span<const std::string> folders);
    /// The next folder to prefetch, if there is one and the concurrency limit allows it.
    [[nodiscard]] std::optional<std::string> nextPrefetch();
    void prefetchEnded() { --m_prefetchInFlight; }

    [[nodiscard]] const ChangeRecord* find(std::string_view path) const;
    [[nodiscard]] std::size_t size() const { return m_nodes.size(); }
    [[nodiscard]] bool isExpanded(std::string_view path) const { return contains(m_expanded, path); }
    [[nodiscard]] bool isFetched(std::string_view path) const { return contains(m_fetched, path); }
    [[nodiscard]] bool isFetching(std::string_view path) const { return contains(m_fetching, path); }
    [[nodiscard]] bool isContentBearing(std::string_view path) const { return contains(m_bearing, path); }
    [[nodiscard]] bool isQueued(std::string_view path) const;
    /// The error of the folder's last fetch; null if there is none.
    [[nodiscard]] const std::string* folderError(std::string_view path) const;
    [[nodiscard]] int prefetchInFlight() const { return m_prefetchInFlight; }

private:
    struct Node {
        ChangeRecord change;
        std::unique_ptr<const std::string> canonical; ///< the canonical path, null if that is the path itself
        std::size_t index;                            ///< in m_nodes

        [[nodiscard]] std::string_view key() const { return canonical ? *canonical : change.path; }
    };
    struct NodeHash {
        using is_transparent = void;
        std::size_t operator()(const Node* node) const { return (*this)(node->key()); }
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };
    struct NodeEqual {
        using is_transparent = void;
        bool operator()(const Node* left, const Node* right) const { return left->key() == right->key(); }
        bool operator()(const Node* node, std::string_view key) const { return node->key() == key; }
        bool operator()(std::string_view key, const Node* node) const { return node->key() == key; }
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    using Keys = std::unordered_set<std::string, Hash, std::equal_to<>>;
    using Nodes = std::vector<const Node*>;

    static bool contains(const Keys& keys, std::string_view path);
    static void sortByPath(Nodes& nodes);

    void add(std::vector<ChangeRecord>&& rows);
    void markAncestors(const Node& node);
    [[nodiscard]] const Nodes* children(std::string_view key) const;
    [[nodiscard]] bool isSettled(std::string_view key) const;
    [[nodiscard]] bool isHidden(const Node& node, bool contentOnly) const;
    [[nodiscard]] std::vector<DisplayRow> searchHits(bool contentOnly, std::string_view search) const;

    std::deque<Node> m_nodes; ///< a deque, for stable addresses
    std::unordered_set<const Node*, NodeHash, NodeEqual> m_merged;
    std::unordered_map<std::string, Nodes, Hash, std::equal_to<>> m_children;
    Nodes m_roots;
    Keys m_expanded;
    Keys m_fetched;
    Keys m_fetching;
    Keys m_bearing;
    std::map<std::string, std::string, std::less<>> m_errors;
    std::deque<std::string> m_backlog;
    Keys m_queued; ///< the same paths
    int m_prefetchInFlight = 0;
};

} // namespace tallyglass
