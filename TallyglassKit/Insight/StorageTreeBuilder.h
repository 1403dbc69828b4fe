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
    /// `expectedRows` is a hint, for reserving memory.
    explicit Builder(std::size_t expectedRows = 0);

    void add(const ChangeRecord& row);

    [[nodiscard]] StorageTree finish() &&;

private:
    /// A node in the order of its creation: after its parent. Its name ends where the next one starts.
    struct Draft {
        std::int64_t gained = 0;
        std::int64_t lost = 0;
        std::int64_t changeCount = 0;
        std::size_t nameStart = 0;
        Index parent = 0;
        Index lastChild = 0; ///< the end of the list of children; 0 if there are none
        Index previousSibling = 0;
        bool isUnordered = false; ///< the list isn't by name, and children are found in the table
    };
    /// A component of the previous path.
    struct Step {
        Index node = 0;
        std::size_t end = 0; ///< in the path
    };

    [[nodiscard]] Index nodeFor(std::string_view path);
    [[nodiscard]] Index child(Index parent, std::string_view name);
    [[nodiscard]] Index childByTable(Index parent, std::string_view name);
    [[nodiscard]] Index create(Index parent, std::string_view name);
    [[nodiscard]] std::string_view nameOf(Index draft) const;
    [[nodiscard]] std::size_t slotFor(Index parent, std::string_view name) const;
    void fillTable();
    void sumUp();
    void appendChildren(Index parent, std::vector<Index>& order) const;

    std::vector<Draft> m_drafts;
    std::string m_names;
    std::vector<Index> m_table; // open addressing: drafts by hash; 0, which is no child, in a free slot
    Index m_inTable = 1;        // drafts before this one are in the table

    std::string m_previousPath;
    std::vector<Step> m_previousSteps;
};

} // namespace tallyglass
