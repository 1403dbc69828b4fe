// Where most of a comparison's change is, in one sentence. A value, computed from a tree; any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallyglass {

class StorageTree;

struct ChangeExplanation {
    struct Place {
        std::string path; ///< of a node of the tree
        std::int64_t magnitude = 0;
        std::int64_t netBytes = 0;
        std::int64_t changeCount = 0;
        double share = 0; ///< of the whole magnitude, 0 to 1

        friend bool operator==(const Place&, const Place&) = default;
    };

    std::int64_t magnitude = 0; ///< of the whole tree, as are the next two
    std::int64_t netBytes = 0;
    std::int64_t changeCount = 0;

    /// At most three, largest first, none within another, which together have more than half of the change;
    /// none if the change is spread over the tree.
    std::vector<Place> places;

    /// Such as "12.4 GB changed, most of it in two places under /Users/anna: 8.1 GB in Movies/Raw (65 %) and
    /// 1.9 GB in Library (15 %)." Plain text, never empty.
    std::string sentence;

    [[nodiscard]] static ChangeExplanation explain(const StorageTree& tree,
                                                   const UserLocale& locale = UserLocale::current());

    friend bool operator==(const ChangeExplanation&, const ChangeExplanation&) = default;
};

} // namespace tallyglass
