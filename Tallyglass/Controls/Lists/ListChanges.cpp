#include "Tallyglass/Controls/Lists/ListChanges.h"

#include <algorithm>

namespace tallyglass {

namespace {

/// Which elements belong to the longest ascending subsequence of `places`; negative ones never do.
std::vector<bool> longestAscending(std::span<const int> places) {
    std::vector<int>
        ends; // at n: the index of the smallest place that ends an ascending subsequence of n + 1
    std::vector<int> predecessors(places.size(), -1);
    const auto placeAt = [&](int index) { return places[static_cast<std::size_t>(index)]; };
    for (std::size_t index = 0; index < places.size(); ++index) {
        if (places[index] < 0)
            continue;
        const auto end = std::ranges::lower_bound(ends, places[index], {}, placeAt);
        if (end != ends.begin())
            predecessors[index] = *std::prev(end);
        if (end == ends.end())
            ends.push_back(static_cast<int>(index));
        else
            *end = static_cast<int>(index);
    }
    std::vector<bool> belongs(places.size());
    for (int index = ends.empty() ? -1 : ends.back(); index >= 0;
         index = predecessors[static_cast<std::size_t>(index)])
        belongs[static_cast<std::size_t>(index)] = true;
    return belongs;
}

/// The runs of false in `stays`, from the front.
std::vector<ListChange> falseRuns(const std::vector<bool>& stays, ListChange::Kind kind) {
    std::vector<ListChange> result;
    for (auto place = stays.begin(); place != stays.end();) {
        const auto first = std::find(place, stays.end(), false);
        place = std::find(first, stays.end(), true);
        if (first != place)
            result.push_back(
                {kind, static_cast<int>(first - stays.begin()), static_cast<int>(place - first)});
    }
    return result;
}

} // namespace

std::vector<ListChange> listChanges(std::span<const int> formerPlaces, int countBefore) {
    const std::vector<bool> isOld = longestAscending(formerPlaces);
    std::vector<bool> stays(static_cast<std::size_t>(countBefore));
    for (std::size_t index = 0; index < formerPlaces.size(); ++index)
        if (isOld[index])
            stays[static_cast<std::size_t>(formerPlaces[index])] = true;

    std::vector<ListChange> changes = falseRuns(stays, ListChange::Kind::remove);
    std::ranges::reverse(changes);
    const auto insertions = falseRuns(isOld, ListChange::Kind::insert);
    changes.insert(changes.end(), insertions.begin(), insertions.end());
    return changes;
}

} // namespace tallyglass
