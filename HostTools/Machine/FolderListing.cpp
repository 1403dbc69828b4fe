#include "HostTools/Machine/FolderListing.h"

#include <dirent.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace tallyglass {

namespace {

std::uint64_t prefixOf(std::string_view name) {
    std::array<unsigned char, 8> bytes{};
    std::memcpy(bytes.data(), name.data(), std::min(name.size(), bytes.size()));
    std::uint64_t prefix = 0;
    for (const unsigned char byte : bytes)
        prefix = prefix << 8 | byte;
    return prefix;
}

} // namespace

void FolderListing::clear() {
    m_items.clear();
    m_names.clear();
}

int FolderListing::read(int folder) {
    clear();
    alignas(dirent64) static thread_local std::array<char, 128 * 1024> buffer;
    for (;;) {
        const ssize_t length = getdents64(folder, buffer.data(), buffer.size());
        if (length < 0)
            return errno;
        if (length == 0)
            break;
        for (ssize_t offset = 0; offset < length;) {
            const auto* entry =
                reinterpret_cast<const dirent64*>(buffer.data() + static_cast<std::size_t>(offset));
            offset += entry->d_reclen;
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            m_items.push_back({.prefix = prefixOf(name),
                               .inode = entry->d_ino,
                               .nameOffset = static_cast<std::uint32_t>(m_names.size()),
                               .nameLength = static_cast<std::uint16_t>(name.size()),
                               .type = entry->d_type});
            m_names.append(name.data(), name.size() + 1);
        }
    }
    std::ranges::sort(m_items, [this](const Item& left, const Item& right) {
        return compare(*this, left, *this, right) < 0;
    });
    return 0;
}

int FolderListing::compare(const FolderListing& leftListing, const Item& left,
                           const FolderListing& rightListing, const Item& right) {
    if (left.prefix != right.prefix)
        return left.prefix < right.prefix ? -1 : 1;
    return leftListing.name(left).compare(rightListing.name(right));
}

} // namespace tallyglass
