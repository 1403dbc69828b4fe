// The items of one folder in the order of their names' bytes, read in large blocks. Reusing a listing for the
// next folder reuses its memory.

#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class FolderListing {
public:
    struct Item {
        std::uint64_t prefix; ///< the name's first bytes as a number, which settles most orderings
        ino_t inode;
        std::uint32_t nameOffset;
        std::uint16_t nameLength;
        std::uint8_t type; ///< DT_REG and so on; DT_UNKNOWN where the file system doesn't tell
    };

    /// Reads the open folder from its start, without "." and "..". Gives 0 or the system's error number.
    [[nodiscard]] int read(int folder);
    void clear();

    [[nodiscard]] std::size_t size() const { return m_items.size(); }
    [[nodiscard]] const Item& operator[](std::size_t index) const { return m_items[index]; }
    [[nodiscard]] std::string_view name(const Item& item) const {
        return {m_names.data() + item.nameOffset, item.nameLength};
    }
    /// The same with a zero byte behind it.
    [[nodiscard]] const char* nameText(const Item& item) const { return m_names.data() + item.nameOffset; }

    /// Negative, zero or positive as the name of `left` comes before, with or after that of `right`.
    [[nodiscard]] static int compare(const FolderListing& leftListing, const Item& left,
                                     const FolderListing& rightListing, const Item& right);

private:
    std::vector<Item> m_items;
    std::string m_names;
};

} // namespace tallyglass
