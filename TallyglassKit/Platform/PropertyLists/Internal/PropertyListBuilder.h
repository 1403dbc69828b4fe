// Builds a property list from the events of a reader: values in order, containers opened and closed, in a
// dictionary a key before each value. Without recursion.
//
// The builder checks no grammar: the reader ensures that keys and values alternate, that every container is
// closed, and that there is one root. One thread.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tallyglass {

class PropertyListBuilder {
public:
    /// `text` is the reader's input in UTF-8, used only to locate errors.
    PropertyListBuilder(PropertyListStorage& storage, std::string_view text)
        : m_storage(storage), m_text(text) {}

    // Views are copied, and must be valid UTF-8 unless they are data.
    void boolean(bool value) { add(PropertyListValue::ofBoolean(value)); }
    void integer(std::int64_t value) { add(PropertyListValue::ofInteger(value)); }
    void unsignedInteger(std::uint64_t value) { add(PropertyListValue::ofUnsigned(value)); }
    void real(double value) { add(PropertyListValue::ofReal(value)); }
    void date(double secondsSince2001) { add(PropertyListValue::ofDate(secondsSince2001)); }
    void uid(std::uint64_t value) { add(PropertyListValue::ofUID(value)); }
    void text(std::string_view utf8) { add(PropertyListValue::ofText(m_storage.keep(utf8))); }
    void data(std::string_view bytes) { add(PropertyListValue::ofData(m_storage.keep(bytes))); }

    /// Fails if containers are nested too deeply; `offset` is the position of this one in the text.
    void beginArray(std::size_t offset) { begin(PropertyListValue::Kind::array, offset); }
    void beginDictionary(std::size_t offset) { begin(PropertyListValue::Kind::dictionary, offset); }
    void key(std::string_view utf8);
    /// Adds the last key again, as its own value.
    void keyAsText();
    /// Closes the innermost open container. Of equal keys in a dictionary the last wins.
    void end();

    /// How many containers are open, and what the innermost of them is.
    [[nodiscard]] std::size_t depth() const { return m_open.size(); }
    [[nodiscard]] bool isInDictionary() const {
        return !m_open.empty() && m_open.back().kind == PropertyListValue::Kind::dictionary;
    }

    /// The value outside of all containers. Requires: there is one.
    [[nodiscard]] PropertyListValue root() const { return m_pending.front(); }

    /// Throws the error for a problem at a position in the text.
    [[noreturn]] void fail(std::string_view problem, std::size_t offset) const;

private:
    struct Open {
        PropertyListValue::Kind kind;
        unsigned nesting;
        std::size_t start; // of its values in m_pending
    };

    void add(PropertyListValue value) { m_pending.push_back(value); }
    void begin(PropertyListValue::Kind kind, std::size_t offset);

    PropertyListStorage& m_storage;
    std::string_view m_text;
    std::vector<Open> m_open;
    std::vector<PropertyListValue> m_pending; // values whose container isn't closed yet
    // Recent keys by hash: lists repeat the same few keys, which need one copy only.
    std::array<PropertyListValue, 256> m_recentKeys;
};

} // namespace tallyglass
