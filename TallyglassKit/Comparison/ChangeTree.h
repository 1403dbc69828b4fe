// The folder tree that grows out of shallow comparisons: the rows fetched so far, the folders that the user
// has opened, and which folders to fetch ahead. Paths are logical paths and are one when they are canonically
// equivalent.
//
// The rules alone, without threads or children. Not thread-safe; pointers to rows are valid until reset().
//
// Invariants:
// 1. There is one row a path, and once it is there it is never replaced.
// 2. The rows below a folder are in the order of their paths.
// 3. A folder is content-bearing exactly when a row below it, at any level, is a content change.
// 4. At most `maxPrefetchConcurrency` folders that nextPrefetch() gave are without their prefetchEnded().

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
    bool isLoading = false; ///< opened, nothing below it yet, and a fetch runs

    friend bool operator==(const DisplayRow&, const DisplayRow&) = default;
};

class ChangeTree {
public:
    static constexpr int maxPrefetchConcurrency = 3;

    /// Takes the rows of the first comparison, whose top is whatever has no parent among them, and queues the
    /// folders at the top.
    void seed(std::vector<ChangeRecord> rows);
    /// Adds the rows of a folder's comparison. They never stand at the top.
    void merge(std::vector<ChangeRecord> rows);
    /// Empties the tree.
    void reset();

    /// What the list shows. Rows of a search are a flat list.
    [[nodiscard]] std::vector<DisplayRow> visibleRows(bool contentOnly, std::string_view search) const;

    /// Opens or closes a folder. True if its own comparison is to be fetched now.
    bool toggleExpand(const ChangeRecord& change);

    // A fetch of one folder: begin, and then one of the ends.

    /// False if it is being fetched already.
    bool beginFetch(const std::string& path);
    void fetchSucceeded(const std::string& path, std::vector<ChangeRecord> rows);
    void fetchFailed(const std::string& path, std::string message);
    void fetchCancelled(const std::string& path);

    // The queue of folders to fetch ahead of the user.

    void schedulePrefetch(std::span<const std::string> folders);
    /// The next folder to fetch, if there is one and fewer run than may.
    [[nodiscard]] std::optional<std::string> nextPrefetch();
    void prefetchEnded() { --m_prefetchInFlight; }

    [[nodiscard]] const ChangeRecord* find(std::string_view path) const;
    [[nodiscard]] std::size_t size() const { return m_nodes.size(); }
    [[nodiscard]] bool isExpanded(std::string_view path) const { return contains(m_expanded, path); }
    [[nodiscard]] bool isFetched(std::string_view path) const { return contains(m_fetched, path); }
    [[nodiscard]] bool isFetching(std::string_view path) const { return contains(m_fetching, path); }
    [[nodiscard]] bool isContentBearing(std::string_view path) const { return contains(m_bearing, path); }
    [[nodiscard]] bool isQueued(std::string_view path) const;
    /// The last failure of the folder's fetch; null if there is none.
    [[nodiscard]] const std::string* folderError(std::string_view path) const;
    [[nodiscard]] int prefetchInFlight() const { return m_prefetchInFlight; }

private:
    struct Node {
        ChangeRecord change;
        std::unique_ptr<const std::string> canonical; ///< the path's form, null when that is the path itself
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

    std::deque<Node> m_nodes; ///< addresses stay
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
