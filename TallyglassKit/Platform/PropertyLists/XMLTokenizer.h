// Reads a property list in XML token by token, for readers with and without a tree.
//
// A token is a whole scalar or the start or end of a container, never a bare tag. The tokenizer ensures that
// the tokens form one valid property list: one root, a key before each value of a dictionary, containers
// closed in order. It allows 512 nested containers, needs no recursion, and takes time linear in the size of
// the document. Text is a view of the document unless a reference or CDATA must be decoded.
//
// Text is valid UTF-8. A document in UTF-16 or ISO-8859-1 is converted as a whole first.
//
// One thread at a time. The document must outlive the tokenizer.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/PropertyLists/Internal/XMLScalars.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

class XMLTokenizer {
public:
    enum class Token : std::uint8_t {
        dictionary, ///< begins one
        endDictionary,
        array, ///< begins one
        endArray,
        key, ///< with text(); the first token of its value follows
        string,
        integer,
        real,
        boolean,
        date,
        data,
        end, ///< of the document; no token follows
    };

    static constexpr std::size_t maximumDepth = 512;

    /// Throws PropertyListError if the document can't be converted to UTF-8.
    explicit XMLTokenizer(std::string_view document);
    XMLTokenizer(const XMLTokenizer&) = delete;
    XMLTokenizer& operator=(const XMLTokenizer&) = delete;

    /// The next token. Throws PropertyListError; after that the tokenizer must not be used.
    Token next();

    /// Skips the rest of the value that begins with `first`, the token just returned.
    void skipRest(Token first);
    /// Skips one whole value.
    void skipValue() { skipRest(next()); }

    /// The text of a key or string, or the bytes of data. Valid until the next token.
    [[nodiscard]] std::string_view text() const { return m_text; }
    /// Whether text() needed no decoding, and so is valid for the lifetime of the tokenizer.
    [[nodiscard]] bool isTextLasting() const { return m_text.data() != m_decoded.data(); }
    [[nodiscard]] XMLInteger integer() const { return m_integer; }
    [[nodiscard]] double real() const { return m_real; }
    [[nodiscard]] bool boolean() const { return m_boolean; }
    [[nodiscard]] Date date() const { return m_date; }

private:
    enum class Element : std::uint8_t;
    enum class Expected : std::uint8_t;
    struct Tag {
        Element element;
        bool isEnd = false;
        bool isEmpty = false;
    };

    [[noreturn]] void fail(const char* where, std::string_view problem) const;
    [[nodiscard]] std::size_t remaining() const { return static_cast<std::size_t>(m_end - m_position); }
    template <std::size_t N>
    bool skip(const char (&literal)[N]);
    void skipWhiteSpace();
    void skipPast(std::string_view terminator, std::string_view what);
    void skipBetweenElements();

    void readProlog();
    void skipDocumentType();
    void readClosing();
    Tag readTag();
    Tag readUncommonTag();
    void readEndTag(Element element);
    [[noreturn]] void failAtTag(Tag tag) const;

    Token readUncommonScalar(Tag tag);
    Token open(Token token, bool isEmpty);
    Token close(Token token);
    Token finish(Token token);
    void readText(Tag tag);
    void decodeText(Element element, const char* start);
    void decodeReference();
    void readInteger(Tag tag);
    std::string_view readRaw(Tag tag);
    template <typename Value>
    Value valid(const std::optional<Value>& value, Tag tag) const;

    std::string m_converted; // the document in UTF-8, if it had to be converted
    const char* m_begin = nullptr;
    const char* m_position = nullptr;
    const char* m_end = nullptr;
    const char* m_tagStart = nullptr; // of the last tag read, for errors

    std::size_t m_depth = 0;
    std::bitset<maximumDepth> m_isDictionary; // for each open container, the outermost first
    Expected m_expected;                      // what may follow
    Expected m_expectedAfterValue;            // after a value in the innermost container
    bool m_isInPlist = false;

    std::string_view m_text;
    std::string m_decoded;
    XMLInteger m_integer;
    double m_real = 0;
    bool m_boolean = false;
    Date m_date;
};

} // namespace tallyglass
