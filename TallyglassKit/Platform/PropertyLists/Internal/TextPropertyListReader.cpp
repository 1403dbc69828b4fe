#include "TallyglassKit/Platform/PropertyLists/Internal/TextPropertyListReader.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListBuilder.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <fmt/core.h>

#include <bit>
#include <iterator>
#include <optional>
#include <string>

// One pass over the text without recursion: the stack of open containers is the builder's, and the innermost
// of them decides whether a pair of a dictionary or an element of an array follows. White space and comments
// may separate tokens. Strings are views of the text unless they have escapes.

namespace tallyglass {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view lineSeparator = "\u2028";
constexpr std::string_view paragraphSeparator = "\u2029";

bool isUnquoted(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || c == '/' || c == ':' || c == '.' || c == '-';
}

// NeXTSTEP's character set, which octal escapes use, from 0x80 on; below it is ASCII.
constexpr char16_t nextStepCharacters[] =
    u"\u00A0\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C7\u00C8\u00C9\u00CA\u00CB\u00CC\u00CD\u00CE\u00CF"
    u"\u00D0\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6\u00D9\u00DA\u00DB\u00DC\u00DD\u00DE\u00B5\u00D7\u00F7"
    u"\u00A9\u00A1\u00A2\u00A3\u2044\u00A5\u0192\u00A7\u00A4\u2019\u201C\u00AB\u2039\u203A\uFB01\uFB02"
    u"\u00AE\u2013\u2020\u2021\u00B7\u00A6\u00B6\u2022\u201A\u201E\u201D\u00BB\u2026\u2030\u00AC\u00BF"
    u"\u00B9\u02CB\u00B4\u02C6\u02DC\u00AF\u02D8\u02D9\u00A8\u00B2\u02DA\u00B8\u00B3\u02DD\u02DB\u02C7"
    u"\u2014\u00B1\u00BC\u00BD\u00BE\u00E0\u00E1\u00E2\u00E3\u00E4\u00E5\u00E7\u00E8\u00E9\u00EA\u00EB"
    u"\u00EC\u00C6\u00ED\u00AA\u00EE\u00EF\u00F0\u00F1\u0141\u00D8\u0152\u00BA\u00F2\u00F3\u00F4\u00F5"
    u"\u00F6\u00E6\u00F9\u00FA\u00FB\u0131\u00FC\u00FD\u0142\u00F8\u0153\u00DF\u00FE\u00FF\uFFFD\uFFFD";
static_assert(std::size(nextStepCharacters) == 128 + 1);

char32_t nextStepCharacter(unsigned char byte) {
    return byte < 0x80 ? byte : nextStepCharacters[byte - 0x80];
}

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return {};
}

class TextReader {
public:
    TextReader(std::string_view text, PropertyListStorage& storage)
        : m_text(text), m_builder(storage, text) {}

    PropertyListValue read();

private:
    void readPair();
    void readElement();
    void readValue();
    void readData();
    /// A string that is valid until the next one is read.
    std::string_view readString();
    std::string_view readQuoted(char quote);
    void readEscape();
    [[nodiscard]] char32_t readUnicodeEscape();
    [[nodiscard]] unsigned readDigits(unsigned base, int most);

    void skipWhiteSpace();
    void skipComment();
    [[nodiscard]] std::size_t whiteSpaceSize() const;
    [[nodiscard]] bool atEnd() const { return m_at == m_text.size(); }
    [[nodiscard]] bool sees(char c) const { return !atEnd() && m_text[m_at] == c; }
    [[nodiscard]] bool sees(std::string_view text) const { return m_text.substr(m_at).starts_with(text); }
    void expect(char c, std::string_view where);
    void closeContainer();

    std::string_view m_text;
    PropertyListBuilder m_builder;
    std::size_t m_at = 0;
    bool m_isAfterValue = false; // a separator or the end of the container must follow
    std::string m_decoded;
};

PropertyListValue TextReader::read() {
    if (const auto invalid = findInvalidUTF8(m_text); invalid != std::string_view::npos)
        m_builder.fail("a byte that isn't UTF-8", invalid);
    skipWhiteSpace();
    if (atEnd()) {
        m_builder.beginDictionary(m_at);
        m_builder.end();
        return m_builder.root();
    }
    readValue();
    while (m_builder.depth() > 0) {
        skipWhiteSpace();
        if (m_builder.isInDictionary())
            readPair();
        else
            readElement();
    }
    skipWhiteSpace();
    if (!atEnd())
        m_builder.fail("text follows the end of the list", m_at);
    return m_builder.root();
}

void TextReader::readPair() {
    if (m_isAfterValue) {
        expect(';', "after the value of a key");
        m_isAfterValue = false;
        return;
    }
    if (sees('}'))
        return closeContainer();
    m_builder.key(readString());
    skipWhiteSpace();
    if (sees(';')) {
        m_builder.keyAsText();
        m_isAfterValue = true;
        return;
    }
    expect('=', "after a key");
    skipWhiteSpace();
    readValue();
}

void TextReader::readElement() {
    if (sees(')'))
        return closeContainer();
    if (m_isAfterValue) {
        expect(',', "after an element of an array");
        m_isAfterValue = false;
        return;
    }
    readValue();
}

void TextReader::closeContainer() {
    ++m_at;
    m_builder.end();
    m_isAfterValue = true;
}

void TextReader::readValue() {
    m_isAfterValue = false;
    if (sees('{'))
        m_builder.beginDictionary(m_at++);
    else if (sees('('))
        m_builder.beginArray(m_at++);
    else {
        if (sees('<'))
            readData();
        else
            m_builder.text(readString());
        m_isAfterValue = true;
    }
}

void TextReader::readData() {
    const std::size_t start = m_at++;
    m_decoded.clear();
    while (!sees('>')) {
        if (atEnd())
            m_builder.fail("data without its end", start);
        if (const std::size_t blank = whiteSpaceSize()) {
            m_at += blank;
            continue;
        }
        unsigned byte = 0;
        for (int i = 0; i < 2; ++i, ++m_at) {
            const auto digit = atEnd() ? std::nullopt : hexDigit(m_text[m_at]);
            if (!digit)
                m_builder.fail("data that isn't pairs of hexadecimal digits", m_at);
            byte = byte << 4 | *digit;
        }
        m_decoded.push_back(static_cast<char>(byte));
    }
    ++m_at;
    m_builder.data(m_decoded);
}

std::string_view TextReader::readString() {
    if (sees('"') || sees('\''))
        return readQuoted(m_text[m_at]);
    const std::size_t start = m_at;
    while (!atEnd() && isUnquoted(m_text[m_at]))
        ++m_at;
    if (m_at == start)
        m_builder.fail(atEnd() ? "the text ends too early" : "an unexpected character", start);
    return m_text.substr(start, m_at - start);
}

std::string_view TextReader::readQuoted(char quote) {
    const std::size_t start = m_at++;
    const char stops[] = {quote, '\\'};
    m_decoded.clear();
    for (;;) {
        const std::size_t stop = m_text.find_first_of({stops, 2}, m_at);
        if (stop == std::string_view::npos)
            m_builder.fail("a string without its closing quote", start);
        const auto piece = m_text.substr(m_at, stop - m_at);
        m_at = stop + 1;
        if (m_text[stop] == quote) {
            if (m_decoded.empty())
                return piece;
            return m_decoded += piece;
        }
        m_decoded += piece;
        if (atEnd())
            m_builder.fail("a string without its closing quote", start);
        readEscape();
    }
}

void TextReader::readEscape() {
    const char c = m_text[m_at++];
    switch (c) {
    case 'a':
        m_decoded += '\a';
        break;
    case 'b':
        m_decoded += '\b';
        break;
    case 'f':
        m_decoded += '\f';
        break;
    case 'n':
        m_decoded += '\n';
        break;
    case 'r':
        m_decoded += '\r';
        break;
    case 't':
        m_decoded += '\t';
        break;
    case 'v':
        m_decoded += '\v';
        break;
    case 'U':
        appendUTF8(m_decoded, readUnicodeEscape());
        break;
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
        --m_at;
        appendUTF8(m_decoded, nextStepCharacter(static_cast<unsigned char>(readDigits(8, 3))));
        break;
    default: // quotes and the backslash among them
        m_decoded += c;
        break;
    }
}

char32_t TextReader::readUnicodeEscape() {
    const char32_t first = readDigits(16, 4);
    if (first < 0xD800 || first > 0xDBFF || !sees("\\U"))
        return first;
    const std::size_t start = m_at;
    m_at += 2;
    const char32_t second = readDigits(16, 4);
    if (second >= 0xDC00 && second <= 0xDFFF)
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    m_at = start;
    return first;
}

unsigned TextReader::readDigits(unsigned base, int most) {
    unsigned value = 0;
    for (int i = 0; i < most && !atEnd(); ++i, ++m_at) {
        const auto digit = hexDigit(m_text[m_at]);
        if (!digit || *digit >= base)
            break;
        value = value * base + *digit;
    }
    return value;
}

std::size_t TextReader::whiteSpaceSize() const {
    const char c = m_text[m_at];
    if (c == ' ' || (c >= '\t' && c <= '\r'))
        return 1;
    return sees(lineSeparator) || sees(paragraphSeparator) ? lineSeparator.size() : 0;
}

void TextReader::skipWhiteSpace() {
    while (!atEnd()) {
        if (sees("//") || sees("/*"))
            skipComment();
        else if (const std::size_t size = whiteSpaceSize())
            m_at += size;
        else
            break;
    }
}

void TextReader::skipComment() {
    const std::size_t start = m_at;
    if (sees("/*")) {
        const std::size_t end = m_text.find("*/", m_at + 2);
        if (end == std::string_view::npos)
            m_builder.fail("a comment without its end", start);
        m_at = end + 2;
        return;
    }
    while (!atEnd() && !sees('\n') && !sees('\r') && !sees(lineSeparator) && !sees(paragraphSeparator))
        ++m_at;
}

void TextReader::expect(char c, std::string_view where) {
    if (!sees(c))
        m_builder.fail(fmt::format("'{}' is missing {}", c, where), m_at);
    ++m_at;
}

} // namespace

PropertyListValue readTextPropertyList(std::string_view bytes, PropertyListStorage& storage) {
    if (bytes.starts_with("\xFE\xFF"))
        return TextReader(utf8FromUTF16(bytes.substr(2), std::endian::big), storage).read();
    if (bytes.starts_with("\xFF\xFE"))
        return TextReader(utf8FromUTF16(bytes.substr(2), std::endian::little), storage).read();
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    return TextReader(bytes, storage).read();
}

} // namespace tallyglass
