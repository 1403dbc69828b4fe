// A property list in memory, read from any of its three forms: binary, XML or old-style text.
//
// Immutable and shared: any thread may read it. It owns everything that its values borrow: the input isn't
// needed any longer, and moving a list leaves its values valid.
//
// Memory: reading needs at most memoryPerByte times the size of the input and 64 KiB, for any input. Time:
// linear in the size of the input.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tallyglass {

class PropertyList {
public:
    /// The worst case is "{a;a;...": 2 bytes make a pair of 32, first in a growing vector and then in the
    /// storage, with up to 11 for its slot in the key table. The binary form needs about half.
    static constexpr std::size_t memoryPerByte = 64;
    /// The largest input that can be parsed; longer files needn't be loaded.
    static constexpr std::size_t mostBytes = UINT32_MAX;

    /// Parses the binary, XML or old-style form, detected by how the bytes begin. Throws PropertyListError.
    [[nodiscard]] static PropertyList parse(std::string_view bytes);

    [[nodiscard]] PropertyListValue root() const { return m_root; }

    /// The memory of the list in bytes.
    [[nodiscard]] std::size_t memorySize() const { return m_storage.size(); }

private:
    PropertyList() = default;

    PropertyListStorage m_storage;
    PropertyListValue m_root;
};

} // namespace tallyglass
