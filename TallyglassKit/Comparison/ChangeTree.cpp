#include "TallyglassKit/Comparison/ChangeTree.h"

#include "TallyglassKit/Platform/Text/CanonicalText.h"

#include <algorithm>
#include <iterator>

namespace tallyglass {

void ChangeTree::seed(std::vector<ChangeRecord> rows) {
    Keys paths;
    for (const ChangeRecord& row : rows)
        paths.insert(canonicalForm(row.path));
    std::vector<std::string> top;
    for (const ChangeRecord& row : rows) {
        if (!contains(paths, row.parentPath()))
            top.push_back(canonicalForm(row.path));
    }
    add(std::move(rows));

    m_roots.clear();
    for (const std::string& path : top)
        m_roots.push_back(*m_merged.find(std::string_view(path)));
    sortByPath(m_roots);
    std::vector<std::string> folders;
    for (const Node* root : m_roots) {
        if (root->change.isDirectory)
            folders.push_back(root->change.path);
    }
    schedulePrefetch(folders);
}

void ChangeTree::merge(std::vector<ChangeRecord> rows) {
    add(std::move(rows));
}

void ChangeTree::reset() {
    *this = ChangeTree();
}

/// Adds new rows and sorts the folders that have gained some.
void ChangeTree::add(std::vector<ChangeRecord>&& rows) {
    m_merged.reserve(m_merged.size() + rows.size());
    std::unordered_map<Nodes*, std::size_t> grown; // with the number of rows that are sorted already
    for (ChangeRecord& row : rows) {
        std::unique_ptr<const std::string> canonical;
        if (!isCanonical(row.path))
            canonical = std::make_unique<const std::string>(canonicalForm(row.path));
        if (m_merged.contains(std::string_view(canonical ? *canonical : row.path)))
            continue;
        const Node& node = m_nodes.emplace_back(Node{std::move(row), std::move(canonical), m_nodes.size()});
        m_merged.insert(&node);
        const std::string_view parent = parentPath(node.key());
        auto folder = m_children.find(parent);
        if (folder == m_children.end())
            folder = m_children.emplace(parent, Nodes()).first;
        grown.try_emplace(&folder->second, folder->second.size());
        folder->second.push_back(&node);
        if (node.change.isContentChange())
            markAncestors(node);
    }
    for (const auto& [nodes, ordered] : grown) {
        const auto firstNew = nodes->begin() + static_cast<std::ptrdiff_t>(ordered);
        Nodes fresh(firstNew, nodes->end());
        sortByPath(fresh);
        std::ranges::copy(fresh, firstNew);
        std::inplace_merge(nodes->begin(), firstNew, nodes->end(),
                           [](const Node* left, const Node* right) { return left->key() < right->key(); });
    }
}

void ChangeTree::markAncestors(const Node& node) {
    for (std::string_view folder = parentPath(node.key()); !folder.empty(); folder = parentPath(folder)) {
        if (m_bearing.contains(folder))
            return;
        m_bearing.emplace(folder);
    }
}

void ChangeTree::sortByPath(Nodes& nodes) {
    std::ranges::stable_sort(nodes, {}, &Node::key);
}

bool ChangeTree::contains(const Keys& keys, std::string_view path) {
    return isCanonical(path) ? keys.contains(path) : keys.contains(canonicalForm(path));
}

const ChangeTree::Nodes* ChangeTree::children(std::string_view key) const {
    const auto found = m_children.find(key);
    return found == m_children.end() ? nullptr : &found->second;
}

const ChangeRecord* ChangeTree::find(std::string_view path) const {
    const std::string key = canonicalForm(path);
    const auto found = m_merged.find(std::string_view(key));
    return found == m_merged.end() ? nullptr : &(*found)->change;
}

bool ChangeTree::isHidden(const Node& node, bool contentOnly) const {
    if (!contentOnly)
        return false;
    if (node.change.isDirectory)
        return m_fetched.contains(node.key()) && !m_bearing.contains(node.key());
    return !node.change.isContentChange();
}

std::vector<DisplayRow> ChangeTree::visibleRows(bool contentOnly, std::string_view search) const {
    if (!search.empty())
        return searchHits(contentOnly, search);

    struct Level {
        const Nodes* nodes;
        std::size_t next = 0;
    };
    std::vector<DisplayRow> rows;
    std::vector<bool> emitted(m_nodes.size());
    std::vector<Level> levels{{&m_roots}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.nodes->size()) {
            levels.pop_back();
            continue;
        }
        const Node& node = *(*level.nodes)[level.next++];
        if (emitted[node.index] || isHidden(node, contentOnly))
            continue;
        emitted[node.index] = true;
        const Nodes* const below = children(node.key());
        const bool isExpanded = m_expanded.contains(node.key());
        rows.push_back(DisplayRow{.change = &node.change,
                                  .indent = static_cast<int>(levels.size()) - 1,
                                  .isExpandable = node.change.isDirectory,
                                  .isExpanded = isExpanded,
                                  .isLoading = isExpanded && !below && m_fetching.contains(node.key())});
        if (node.change.isDirectory && isExpanded && below)
            levels.push_back({below});
    }
    return rows;
}

std::vector<DisplayRow> ChangeTree::searchHits(bool contentOnly, std::string_view search) const {
    const ChangeFilter filter(contentOnly, search, std::nullopt);
    Nodes hits;
    for (const Node& node : m_nodes) {
        if (filter.keeps(node.change))
            hits.push_back(&node);
    }
    sortByPath(hits);
    std::vector<DisplayRow> rows(hits.size());
    std::ranges::transform(hits, rows.begin(),
                           [](const Node* node) { return DisplayRow{.change = &node->change}; });
    return rows;
}

bool ChangeTree::toggleExpand(const ChangeRecord& change) {
    if (!change.isDirectory)
        return false;
    std::string key = canonicalForm(change.path);
    if (m_expanded.erase(key) > 0)
        return false;
    m_expanded.insert(key);
    const Nodes* const below = children(key);
    if (!below)
        return !m_fetching.contains(key);
    std::vector<std::string> folders;
    for (const Node* node : *below) {
        if (node->change.isDirectory)
            folders.push_back(node->change.path);
    }
    schedulePrefetch(folders);
    return false;
}

bool ChangeTree::beginFetch(const std::string& path) {
    const std::string key = canonicalForm(path);
    if (!m_fetching.insert(key).second)
        return false;
    m_errors.erase(key);
    return true;
}

void ChangeTree::fetchSucceeded(const std::string& path, std::vector<ChangeRecord> rows) {
    std::string key = canonicalForm(path);
    m_fetching.erase(key);
    merge(std::move(rows));
    m_fetched.insert(std::move(key));
}

void ChangeTree::fetchFailed(const std::string& path, std::string message) {
    const std::string key = canonicalForm(path);
    m_fetching.erase(key);
    m_errors.insert_or_assign(key, std::move(message));
}

void ChangeTree::fetchCancelled(const std::string& path) {
    m_fetching.erase(canonicalForm(path));
}

bool ChangeTree::isSettled(std::string_view key) const {
    return children(key) || m_fetched.contains(key) || m_fetching.contains(key);
}

void ChangeTree::schedulePrefetch(std::span<const std::string> folders) {
    for (const std::string& folder : folders) {
        std::string key = canonicalForm(folder);
        if (isSettled(key) || !m_queued.insert(std::move(key)).second)
            continue;
        m_backlog.push_back(folder);
    }
}

std::optional<std::string> ChangeTree::nextPrefetch() {
    while (m_prefetchInFlight < maxPrefetchConcurrency && !m_backlog.empty()) {
        std::string folder = std::move(m_backlog.front());
        m_backlog.pop_front();
        const std::string key = canonicalForm(folder);
        m_queued.erase(key);
        if (isSettled(key))
            continue;
        ++m_prefetchInFlight;
        return folder;
    }
    return std::nullopt;
}

bool ChangeTree::isQueued(std::string_view path) const {
    return contains(m_queued, path);
}

const std::string* ChangeTree::folderError(std::string_view path) const {
    const auto found = m_errors.find(canonicalForm(path));
    return found == m_errors.end() ? nullptr : &found->second;
}

} // namespace tallyglass
