// The first place is at the end of the path from the root along the children with more than half of the whole
// change. What it leaves over is searched for further places in the same way: down along the largest rest,
// past every folder with a place in it, to where a folder's rest is no longer nearly all in one child.
//
// If the first place has nearly everything, there is nothing to name beside it, and the places within it are
// named if they have more than half. Else the change is spread over it.

#include "TallyglassKit/Insight/Internal/LargestPlaces.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>

namespace tallyglass {

namespace {

using Index = StorageTree::Index;

constexpr std::size_t mostPlaces = 3;
constexpr double leastShare = 0.05;  ///< of the whole, for a place beside others
constexpr double nearlyAll = 0.9;    ///< of the whole, beside which no other place is worth naming
constexpr double mostOfFolder = 0.8; ///< in one child, for going on to that

class Search {
public:
    explicit Search(const StorageTree& tree) : m_tree(tree) {}

    std::vector<Index> run() {
        const Index first = dominantPlace();
        if (share(first) < nearlyAll) {
            take(first);
            addPlacesBelow(0);
        } else {
            m_taken.emplace(first, 0); // it isn't a place itself
            addPlacesBelow(first);
            if (!haveMost())
                m_places = first == 0 ? std::vector<Index>() : std::vector{first};
        }
        std::ranges::stable_sort(m_places, std::greater(),
                                 [&](Index place) { return m_tree.magnitudeOf(place); });
        return m_places;
    }

private:
    [[nodiscard]] double bytes(Index node) const { return static_cast<double>(m_tree.magnitudeOf(node)); }
    [[nodiscard]] double share(Index node) const { return bytes(node) / bytes(0); }

    [[nodiscard]] Index dominantPlace() const {
        Index node = 0;
        while (true) {
            const auto children = m_tree.childrenOf(node);
            if (children.empty() || share(children.front()) <= 0.5)
                return node;
            node = children.front();
        }
    }

    /// The bytes in `node` that are in no place.
    [[nodiscard]] std::int64_t rest(Index node) const {
        const auto taken = m_taken.find(node);
        return m_tree.magnitudeOf(node) - (taken == m_taken.end() ? 0 : taken->second);
    }

    /// The child with the largest rest, if any has one.
    [[nodiscard]] std::optional<Index> largestChild(Index node) const {
        std::optional<Index> largest;
        for (const Index child : m_tree.childrenOf(node)) {
            const auto least = largest ? rest(*largest) : 0;
            if (m_tree.magnitudeOf(child) <= least)
                break; // as are all that follow
            if (rest(child) > least)
                largest = child;
        }
        return largest;
    }

    [[nodiscard]] std::optional<Index> placeBelow(Index node) const {
        while (true) {
            const bool hasPlaces = m_taken.contains(node);
            const auto child = largestChild(node);
            if (hasPlaces ? !child : !child || bytes(*child) < mostOfFolder * bytes(node))
                return hasPlaces ? std::nullopt : std::optional(node);
            node = *child;
        }
    }

    void addPlacesBelow(Index node) {
        while (m_places.size() < mostPlaces) {
            const auto place = placeBelow(node);
            if (!place || share(*place) < leastShare)
                return;
            take(*place);
        }
    }

    void take(Index place) {
        m_places.push_back(place);
        const auto taken = m_tree.magnitudeOf(place);
        for (std::optional<Index> node = place; node; node = m_tree.parentOf(*node))
            m_taken[*node] += taken;
    }

    [[nodiscard]] bool haveMost() const {
        double sum = 0;
        for (const Index place : m_places)
            sum += share(place);
        return sum > 0.5;
    }

    const StorageTree& m_tree;
    std::vector<Index> m_places;
    std::unordered_map<Index, std::int64_t> m_taken; ///< the bytes of places at or below a node
};

} // namespace

std::vector<Index> largestPlaces(const StorageTree& tree) {
    if (tree.isEmpty() || tree.magnitudeOf(0) == 0)
        return {};
    return Search(tree).run();
}

} // namespace tallyglass
