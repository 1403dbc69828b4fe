// Makes a StorageTree from rows in any order, quickest in the order of their paths. One thread at a time.

#pragma once

#include "TallyglassKit/Insight/StorageTree.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class StorageTree::Builder {
public:
    void add(const ChangeRecord& row);

    [[nodiscard]] StorageTree finish() &&;

private:
    /// A node in the order of its creation: after its parent.
    struct Draft {
        std::int64_t gained = 0;
        std::int64_t lost = 0;
        std::int64_t changeCount = 0;
        std::size_t nameStart = 0;
        std::uint32_t nameLength = 0;
        std::uint32_t hash = 0; ///< of the parent and the name
        Index parent = 0;
    };
    /// A component of the previous path.
    struct Step {
        Index node = 0;
        std::size_t end = 0; ///< in the path
    };

    [[nodiscard]] Index nodeFor(std::string_view path);
    [[nodiscard]] Index child(Index parent, std::string_view name);
    [[nodiscard]] std::string_view nameOf(const Draft& draft) const;
    void growTable();
    void sumUp();
    struct Families;
    [[nodiscard]] Families families() const;

    std::vector<Draft> m_drafts;
    std::string m_names;
    std::vector<Index> m_table; // open addressing: drafts by hash; 0, which is no child, in a free slot

    std::string m_previousPath;
    std::vector<Step> m_previousSteps;
};

} // namespace tallyglass
