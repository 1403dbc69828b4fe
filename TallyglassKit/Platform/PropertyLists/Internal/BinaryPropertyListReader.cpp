#include "TallyglassKit/Platform/PropertyLists/Internal/BinaryPropertyListReader.h"

#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <set>
#include <vector>

// A file is "bplist0" and a digit, the objects, a table of their offsets, and a trailer of 32 bytes. An
// object begins with a marker byte of type and size. A container refers to its elements by their index in the
// table, so that the objects form a graph. All numbers are big-endian.
//
// The reader traverses the graph depth first from the root with an explicit stack. It creates each container,
// and each text that is long or must be converted, only once and finds it again by its index; cycles are
// found by the state of an object: unread, open or made.
//
// To bound memory, each object that is created once claims its bytes of the file. The objects of a valid file
// don't overlap; if the claims exceed the file's size, they do, and the file is rejected. Before that, it
// gets a second pass in which table entries with equal offsets count as one object.

namespace tallyglass {

namespace {

using Kind = PropertyListValue::Kind;

constexpr std::string_view magic = "bplist0";
constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;

// How many objects are fetched ahead of their use.
constexpr std::size_t prefetched = 32;

// A shorter text is cheaper to check again than to remember.
constexpr std::size_t shortText = 64;

// The 8 bytes at `place`, big-endian. They always exist, as the trailer follows everything that is read this
// way.
std::uint64_t word(const char* place) {
    std::uint64_t result = 0;
    std::memcpy(&result, place, sizeof result);
    if constexpr (std::endian::native == std::endian::little)
        result = __builtin_bswap64(result);
    return result;
}

/// An array of numbers of one width, of which the low 64 bits are used.
class Column {
public:
    Column(const char* start, std::size_t width)
        : m_start(start + (width > 8 ? width - 8 : 0)), m_stride(width),
          m_unused(width > 8 ? 0 : 64 - 8 * width) {}

    [[nodiscard]] std::uint64_t operator[](std::size_t i) const { return word(place(i)) >> m_unused; }
    void prefetch(std::size_t i) const { __builtin_prefetch(place(i)); }

private:
    [[nodiscard]] const char* place(std::size_t i) const { return m_start + i * m_stride; }

    const char* m_start;
    std::size_t m_stride;
    std::size_t m_unused; // low bits of a loaded word that belong to the next number
};

/// The layout of a file, checked against its size.
struct Layout {
    explicit Layout(std::string_view bytes);

    std::size_t offsetWidth;
    std::size_t referenceWidth;
    std::uint64_t objectCount;
    std::uint64_t root;
    std::uint64_t objectsEnd; // the table follows
};

Layout::Layout(std::string_view bytes) {
    if (bytes.size() < headerSize + trailerSize)
        throw PropertyListError("the binary file is cut short");
    const std::size_t trailerStart = bytes.size() - trailerSize;
    const char* const trailer = bytes.data() + trailerStart;
    offsetWidth = static_cast<unsigned char>(trailer[6]);
    referenceWidth = static_cast<unsigned char>(trailer[7]);
    objectCount = word(trailer + 8);
    root = word(trailer + 16);
    objectsEnd = word(trailer + 24);

    const auto require = [](bool holds, std::string_view problem, std::size_t offset) {
        if (!holds)
            throw PropertyListError::atByte(problem, offset);
    };
    require(offsetWidth > 0, "the offsets have no width", trailerStart + 6);
    require(referenceWidth > 0, "the references have no width", trailerStart + 7);
    require(objectCount > 0, "there are no objects", trailerStart + 8);
    require(root < objectCount, "the root isn't one of the objects", trailerStart + 16);
    require(objectsEnd > headerSize && objectsEnd < trailerStart, "the offset table lies outside of the file",
            trailerStart + 24);
    const std::size_t tableSize = trailerStart - objectsEnd;
    require(tableSize % offsetWidth == 0 && tableSize / offsetWidth == objectCount,
            "the offset table doesn't fill the file", trailerStart + 8);

    const Column offsets(bytes.data() + objectsEnd, offsetWidth);
    for (std::size_t i = 0; i < objectCount; ++i)
        require(offsets[i] >= headerSize && offsets[i] < objectsEnd, "an offset lies outside of the objects",
                objectsEnd + i * offsetWidth);
}

/// One pass over the objects.
class BinaryReader {
public:
    BinaryReader(std::string_view bytes, const Layout& layout, PropertyListStorage& storage)
        : m_bytes(bytes), m_layout(layout), m_storage(storage),
          m_offsets(bytes.data() + layout.objectsEnd, layout.offsetWidth),
          m_kept(storage.keep(bytes.substr(0, layout.objectsEnd))),
          m_unclaimed(layout.objectsEnd - headerSize), m_states(layout.objectCount) {}

    /// Thrown when the objects claim more bytes than the file has.
    struct Overlap {
        std::size_t offset;
    };

    /// Makes table entries with equal offsets refer to one object.
    void joinEqualOffsets();

    PropertyListValue read();

private:
    enum State : std::uint32_t { unread, open, made }; // made + n: element n of m_made

    struct Open {
        Kind kind;
        unsigned nesting;
        std::uint32_t index;
        std::size_t references; // offset of the first
        std::size_t next;       // of the references
        std::span<PropertyListValue> values;
    };

    struct Extent {
        std::size_t count;
        std::size_t start; // of what is counted
    };

    [[nodiscard]] std::uint32_t reference(std::size_t offset, std::size_t i) const;
    [[nodiscard]] Extent extent(std::size_t offset, std::size_t unit) const;
    [[nodiscard]] std::uint64_t numberAt(std::size_t offset, std::size_t width) const;
    void claim(std::size_t size, std::size_t offset);

    /// Creates an object. A container that isn't empty is only opened here, and finished when it is filled.
    PropertyListValue make(std::uint32_t index);
    /// Creates the elements of a container, until one of them is opened.
    void fill(Open& container);
    void prefetch(const Open& container) const;
    void close();
    PropertyListValue makeInteger(std::size_t offset) const;
    PropertyListValue makeASCII(std::uint32_t index, std::size_t offset);
    PropertyListValue makeUTF16(std::uint32_t index, std::size_t offset);
    PropertyListValue makeContainer(Kind kind, std::uint32_t index, std::size_t offset);
    PropertyListValue makeKey(std::uint32_t index, PropertyListValue value);
    PropertyListValue remember(std::uint32_t index, PropertyListValue value);

    std::string_view m_bytes;
    const Layout& m_layout;
    PropertyListStorage& m_storage;
    Column m_offsets;        // of the objects, by their index
    std::string_view m_kept; // a copy of the objects, from which values borrow
    std::size_t m_unclaimed;
    std::vector<std::uint32_t> m_states;
    std::vector<std::uint32_t> m_first; // maps an index to the first with the same offset; empty if unused
    std::vector<PropertyListValue> m_made;
    std::vector<Open> m_open;
    std::set<std::string_view> m_longKeys; // so that equal ones share their bytes and compare by pointer
};

void BinaryReader::joinEqualOffsets() {
    std::vector<std::uint32_t> order(m_layout.objectCount);
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::uint32_t index) { return m_offsets[index]; });
    m_first.resize(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool isEqual = i > 0 && m_offsets[order[i]] == m_offsets[order[i - 1]];
        m_first[order[i]] = isEqual ? m_first[order[i - 1]] : order[i];
    }
}

PropertyListValue BinaryReader::read() {
    const PropertyListValue value = make(static_cast<std::uint32_t>(m_layout.root));
    if (m_open.empty())
        return value;
    while (!m_open.empty()) {
        fill(m_open.back());
        if (m_open.back().next == m_open.back().values.size())
            close();
    }
    return m_made.back();
}

void BinaryReader::fill(Open& container) {
    const std::size_t depth = m_open.size();
    const bool isDictionary = container.kind == Kind::dictionary;
    const std::size_t count = container.values.size();
    const std::size_t pairs = isDictionary ? count / 2 : 0;
    for (; container.next < count; ++container.next) {
        const std::size_t i = container.next;
        if (i % prefetched == 0)
            prefetch(container);
        const auto index = reference(container.references, i);
        const PropertyListValue value = make(index);
        if (m_open.size() > depth)
            return;
        container.nesting = std::max(container.nesting, value.nesting() + 1);
        if (!isDictionary)
            container.values[i] = value;
        else if (i < pairs)
            container.values[2 * i] = makeKey(index, value);
        else
            container.values[2 * (i - pairs) + 1] = value;
    }
}

// Objects lie anywhere in memory: without prefetching, most of the time would be spent on cache misses.
void BinaryReader::prefetch(const Open& container) const {
    const std::size_t count = std::min(prefetched, container.values.size() - container.next);
    std::array<std::uint32_t, prefetched> indices;
    for (std::size_t i = 0; i < count; ++i) {
        indices[i] = reference(container.references, container.next + i);
        m_offsets.prefetch(indices[i]);
    }
    for (std::size_t i = 0; i < count; ++i)
        __builtin_prefetch(m_bytes.data() + m_offsets[indices[i]]);
}

void BinaryReader::close() {
    const Open closed = m_open.back();
    m_open.pop_back();
    if (closed.nesting > PropertyListStorage::maximumNesting)
        throw PropertyListError::atByte("containers are nested too deeply", m_offsets[closed.index]);
    remember(closed.index,
             m_storage.finish(closed.kind, closed.values, closed.nesting, DuplicateKeys::firstWins));
}

PropertyListValue BinaryReader::make(std::uint32_t index) {
    const std::size_t offset = m_offsets[index];
    const auto marker = static_cast<unsigned char>(m_bytes[offset]);
    switch (marker >> 4) {
    case 0x1:
        return makeInteger(offset);
    case 0x4: {
        const Extent data = extent(offset, 1);
        return PropertyListValue::ofData(m_kept.substr(data.start, data.count));
    }
    case 0x5:
        return makeASCII(index, offset);
    case 0x6:
        return makeUTF16(index, offset);
    case 0x8:
        if (marker > 0x87)
            break;
        return PropertyListValue::ofUID(numberAt(offset + 1, std::size_t{marker & 0xFu} + 1));
    case 0xA:
        return makeContainer(Kind::array, index, offset);
    case 0xC:
        return makeContainer(Kind::set, index, offset);
    case 0xD:
        return makeContainer(Kind::dictionary, index, offset);
    default:
        break;
    }
    switch (marker) {
    case 0x00:
        return {};
    case 0x08:
    case 0x09:
        return PropertyListValue::ofBoolean(marker == 0x09);
    case 0x22:
        return PropertyListValue::ofReal(
            std::bit_cast<float>(static_cast<std::uint32_t>(numberAt(offset + 1, 4))));
    case 0x23:
        return PropertyListValue::ofReal(std::bit_cast<double>(numberAt(offset + 1, 8)));
    case 0x33:
        return PropertyListValue::ofDate(std::bit_cast<double>(numberAt(offset + 1, 8)));
    default:
        throw PropertyListError::atByte(fmt::format("an object of unknown type 0x{:02x}", marker), offset);
    }
}

PropertyListValue BinaryReader::makeInteger(std::size_t offset) const {
    const std::size_t width = std::size_t{1} << (m_bytes[offset] & 0xF);
    if (width > 16)
        throw PropertyListError::atByte("an integer is too wide", offset);
    const std::uint64_t low = numberAt(offset + 1, width);
    // Narrow integers are unsigned. 16 bytes are used for what 8 signed bytes can't hold.
    const bool isSigned = width == 8 || (width == 16 && m_bytes[offset + 1] < 0);
    return isSigned ? PropertyListValue::ofInteger(static_cast<std::int64_t>(low))
                    : PropertyListValue::ofUnsigned(low);
}

PropertyListValue BinaryReader::makeASCII(std::uint32_t index, std::size_t offset) {
    const Extent text = extent(offset, 1);
    if (text.count > shortText && m_states[index] >= made)
        return m_made[m_states[index] - made];
    const auto value = m_kept.substr(text.start, text.count);
    if (const std::size_t outside = findNonASCII(value); outside < value.size())
        throw PropertyListError::atByte("an ASCII text holds another character", text.start + outside);
    if (text.count <= shortText)
        return PropertyListValue::ofText(value);
    claim(text.start + text.count - offset, offset);
    return remember(index, PropertyListValue::ofText(value));
}

PropertyListValue BinaryReader::makeUTF16(std::uint32_t index, std::size_t offset) {
    if (m_states[index] >= made)
        return m_made[m_states[index] - made];
    const Extent text = extent(offset, 2);
    claim(text.start + 2 * text.count - offset, offset);
    const std::string utf8 = utf8FromUTF16(m_bytes.substr(text.start, 2 * text.count), std::endian::big);
    return remember(index, PropertyListValue::ofText(m_storage.keep(utf8)));
}

PropertyListValue BinaryReader::makeContainer(Kind kind, std::uint32_t index, std::size_t offset) {
    if (m_states[index] >= made)
        return m_made[m_states[index] - made];
    if (m_states[index] == open)
        throw PropertyListError::atByte("a container holds itself", offset);
    const std::size_t referencesEach = kind == Kind::dictionary ? 2 : 1;
    const Extent elements = extent(offset, referencesEach * m_layout.referenceWidth);
    if (elements.count == 0)
        return m_storage.finish(kind, {}, 1, DuplicateKeys::firstWins);
    if (m_open.size() == PropertyListStorage::maximumNesting)
        throw PropertyListError::atByte("containers are nested too deeply", offset);
    claim(elements.start + elements.count * referencesEach * m_layout.referenceWidth - offset, offset);
    m_states[index] = open;
    m_open.push_back({kind, 1, index, elements.start, 0, m_storage.allocate(kind, elements.count)});
    return {};
}

PropertyListValue BinaryReader::makeKey(std::uint32_t index, PropertyListValue value) {
    if (value.kind() != Kind::text)
        throw PropertyListError::atByte("a dictionary has a key that isn't text", m_offsets[index]);
    if (value.text()->size() <= shortText || PropertyListStorage::isKey(value))
        return PropertyListStorage::asKey(value);
    const auto text = *m_longKeys.insert(*value.text()).first;
    return m_made[m_states[index] - made] = PropertyListStorage::asKey(PropertyListValue::ofText(text));
}

PropertyListValue BinaryReader::remember(std::uint32_t index, PropertyListValue value) {
    m_states[index] = static_cast<std::uint32_t>(made + m_made.size());
    m_made.push_back(value);
    return value;
}

std::uint32_t BinaryReader::reference(std::size_t offset, std::size_t i) const {
    const std::uint64_t index = Column(m_bytes.data() + offset, m_layout.referenceWidth)[i];
    if (index >= m_layout.objectCount)
        throw PropertyListError::atByte("a reference to an object that doesn't exist",
                                        offset + i * m_layout.referenceWidth);
    return m_first.empty() ? static_cast<std::uint32_t>(index) : m_first[index];
}

std::uint64_t BinaryReader::numberAt(std::size_t offset, std::size_t width) const {
    if (offset + width > m_layout.objectsEnd)
        throw PropertyListError::atByte("a number runs past the objects", offset);
    return Column(m_bytes.data() + offset, width)[0];
}

BinaryReader::Extent BinaryReader::extent(std::size_t offset, std::size_t unit) const {
    std::size_t start = offset + 1;
    std::uint64_t count = m_bytes[offset] & 0xF;
    if (count == 0xF) { // the count follows as an integer object
        const auto marker = static_cast<unsigned char>(m_bytes[start]); // in bounds, as the table follows
        const std::size_t width = std::size_t{1} << (marker & 0xF);
        if (marker >> 4 != 1 || width > 16)
            throw PropertyListError::atByte("a count isn't an integer", start);
        count = numberAt(start + 1, width);
        start += 1 + width;
    }
    if (count > (m_layout.objectsEnd - start) / unit)
        throw PropertyListError::atByte("an object runs past the objects", offset);
    return {count, start};
}

void BinaryReader::claim(std::size_t size, std::size_t offset) {
    if (size > m_unclaimed)
        throw Overlap{offset};
    m_unclaimed -= size;
}

} // namespace

bool isBinaryPropertyList(std::string_view bytes) {
    return bytes.starts_with(magic);
}

PropertyListValue readBinaryPropertyList(std::string_view bytes, PropertyListStorage& storage) {
    const Layout layout(bytes);
    try {
        return BinaryReader(bytes, layout, storage).read();
    } catch (const BinaryReader::Overlap&) {
        storage = {};
    }
    // The table may list some objects twice.
    try {
        BinaryReader reader(bytes, layout, storage);
        reader.joinEqualOffsets();
        return reader.read();
    } catch (const BinaryReader::Overlap& overlap) {
        throw PropertyListError::atByte("an object overlaps others", overlap.offset);
    }
}

} // namespace tallyglass
