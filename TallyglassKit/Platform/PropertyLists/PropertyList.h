// A property list in memory, read from any of its three forms: binary, XML or old-style text.
//
// Immutable and shared: any thread may read it. It owns all that its values borrow, so that the bytes it was
// read from can go, and moves without moving any of it.
//
// Memory: reading needs at most memoryPerByte times the size of the input and 64 KiB, whatever the bytes are.
// Time: in proportion to the size of the input.

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
    /// Worst is "{a;a;...": 2 bytes make a pair of 32 that is first collected, in room that doubles, and then
    /// kept with up to 11 for its place in the table of keys. In the binary form it is about half.
    static constexpr std::size_t memoryPerByte = 64;
    /// The largest input that can be read, which no longer one needs to be loaded for.
    static constexpr std::size_t mostBytes = UINT32_MAX;

    /// Reads bytes that begin as a binary list as such, others as XML or else as old-style text. Throws
    /// PropertyListError; if no form fits, that of the form that the bytes look most like.
    [[nodiscard]] static PropertyList parse(std::string_view bytes);

    [[nodiscard]] PropertyListValue root() const { return m_root; }

    /// The bytes of memory that the list holds.
    [[nodiscard]] std::size_t memorySize() const { return m_storage.size(); }

private:
    PropertyList() = default;

    PropertyListStorage m_storage;
    PropertyListValue m_root;
};

} // namespace tallyglass
