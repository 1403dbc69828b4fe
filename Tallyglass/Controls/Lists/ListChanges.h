// The fewest removals and insertions that turn one list of rows into another, so that a list model can tell
// its views of just these.
//
// Free functions; any thread.

#pragma once

#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tallyglass {

/// Adjacent rows that are removed or inserted.
struct ListChange {
    enum class Kind { remove, insert };
    Kind kind;
    int first; ///< the index of the first row when this change is made
    int count;

    friend bool operator==(const ListChange&, const ListChange&) = default;
};

/// The changes for rows of which the one at `index` was at `formerPlaces[index]` among `countBefore`, or is
/// new for -1. No index occurs twice.
[[nodiscard]] std::vector<ListChange> listChanges(std::span<const int> formerPlaces, int countBefore);

/// The changes that turn `before` into `after`, to be made in this order: the removals from the end, then the
/// insertions from the front. So an insertion at `first` adds the rows that `after` has at this index. Rows
/// with equal keys are the same row, the first of them the first, and so on. A row that moved is removed and
/// inserted again. Requires: keys can be hashed.
template <typename Key>
[[nodiscard]] std::vector<ListChange> listChanges(const std::vector<Key>& before,
                                                  const std::vector<Key>& after) {
    std::unordered_map<Key, int> placeOf; // the first unused index with that key
    std::vector<int> nextWithSameKey(before.size(), -1);
    placeOf.reserve(before.size());
    for (std::size_t place = before.size(); place-- > 0;) {
        const auto [known, isNew] = placeOf.try_emplace(before[place], static_cast<int>(place));
        if (!isNew)
            nextWithSameKey[place] = std::exchange(known->second, static_cast<int>(place));
    }
    std::vector<int> formerPlaces;
    formerPlaces.reserve(after.size());
    for (const Key& key : after) {
        const auto known = placeOf.find(key);
        formerPlaces.push_back(known == placeOf.end() ? -1 : known->second);
        if (formerPlaces.back() >= 0)
            known->second = nextWithSameKey[static_cast<std::size_t>(known->second)];
    }
    return listChanges(formerPlaces, static_cast<int>(before.size()));
}

} // namespace tallyglass
