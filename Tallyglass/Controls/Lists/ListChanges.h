// What turns one list of rows into another: the fewest removals and insertions, so that a list model can tell
// its views of just these, and the rows that stay keep their selection and their place on the screen.
//
// Free functions; any thread.

#pragma once

#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tallyglass {

/// Rows next to each other that go or come.
struct ListChange {
    enum class Kind { remove, insert };
    Kind kind;
    int first; ///< the place of the first row at the moment of this change
    int count;

    friend bool operator==(const ListChange&, const ListChange&) = default;
};

/// The changes for rows of which the one at `index` stood at `formerPlaces[index]` among `countBefore`, or
/// nowhere for -1. No place occurs twice.
[[nodiscard]] std::vector<ListChange> listChanges(std::span<const int> formerPlaces, int countBefore);

/// The changes that turn `before` into `after`, to be made one after the other: first the removals, from the
/// end on, then the insertions, from the front. So an insertion at `first` brings the rows that stand there
/// in `after`, too. Rows with equal keys count as the same row, the first of them as the first, and so on.
/// A row that moved is removed and inserted again. Requires: keys can be hashed.
template <typename Key>
[[nodiscard]] std::vector<ListChange> listChanges(const std::vector<Key>& before,
                                                  const std::vector<Key>& after) {
    std::unordered_map<Key, int> placeOf; // the first place with that key that isn't taken yet
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
