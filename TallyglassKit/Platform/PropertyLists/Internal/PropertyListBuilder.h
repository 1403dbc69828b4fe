// Makes a property list from the events of a reader that goes through a text: values one after the other,
// containers opened and closed, in a dictionary a key before each value. Without recursion.
//
// The builder knows no grammar: the reader sees to it that keys and values alternate, that what is opened is
// closed, and that there is one root. Used by one thread.

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
    /// `text` is what the reader reads, in UTF-8, and only serves to tell the place of an error.
    PropertyListBuilder(PropertyListStorage& storage, std::string_view text)
        : m_storage(storage), m_text(text) {}

    // What is given as a view is copied, and must be valid UTF-8 unless it is data.
    void boolean(bool value) { add(PropertyListValue::ofBoolean(value)); }
    void integer(std::int64_t value) { add(PropertyListValue::ofInteger(value)); }
    void unsignedInteger(std::uint64_t value) { add(PropertyListValue::ofUnsigned(value)); }
    void real(double value) { add(PropertyListValue::ofReal(value)); }
    void date(double secondsSince2001) { add(PropertyListValue::ofDate(secondsSince2001)); }
    void uid(std::uint64_t value) { add(PropertyListValue::ofUID(value)); }
    void text(std::string_view utf8) { add(PropertyListValue::ofText(m_storage.keep(utf8))); }
    void data(std::string_view bytes) { add(PropertyListValue::ofData(m_storage.keep(bytes))); }

    /// Fails if containers nest too deep; `offset` is the place of this one in the text.
    void beginArray(std::size_t offset) { begin(PropertyListValue::Kind::array, offset); }
    void beginDictionary(std::size_t offset) { begin(PropertyListValue::Kind::dictionary, offset); }
    void key(std::string_view utf8);
    /// Gives the last key once more, as the text that is its value.
    void keyAsText();
    /// Closes the innermost open container. Of equal keys in a dictionary the last wins.
    void end();

    /// How many containers are open, and what the innermost of them is.
    [[nodiscard]] std::size_t depth() const { return m_open.size(); }
    [[nodiscard]] bool isInDictionary() const {
        return !m_open.empty() && m_open.back().kind == PropertyListValue::Kind::dictionary;
    }

    /// The value that was made outside of all containers. Requires: there is one.
    [[nodiscard]] PropertyListValue root() const { return m_pending.front(); }

    /// Throws the error that names a problem at a place in the text.
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
    // Keys met lately, by hash: lists repeat the same few keys, which need one copy only.
    std::array<PropertyListValue, 256> m_recentKeys;
};

} // namespace tallyglass
