#include "TallyglassKit/Platform/PropertyLists/XMLTokenizer.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/ByteScan.h"
#include "TallyglassKit/Platform/PropertyLists/Internal/XMLEncoding.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

// A pull parser with one pass over the document. What may follow is a state (Expected) that each tag is
// checked against; the state after a value depends on the innermost container, whose kind is on a stack of
// bits. Common tags are recognised by comparing their first eight bytes as one number; others are read
// character by character. The text of an element is found by scanning for "<" and "&" and is copied only if a
// reference or CDATA must be decoded.

namespace tallyglass {

enum class XMLTokenizer::Element : std::uint8_t {
    plist,
    dictionary,
    array,
    key,
    string,
    integer,
    real,
    isTrue,
    isFalse,
    date,
    data,
};

// From `prolog` on, something else than a tag must follow.
enum class XMLTokenizer::Expected : std::uint8_t {
    root,
    element,
    key,
    value,
    prolog,
    closingOfEmpty,
    closingOfDocument,
    nothing,
};

namespace {

// In the order of Element.
constexpr std::array<std::string_view, 11> elementNames = {
    "plist", "dict", "array", "key", "string", "integer", "real", "true", "false", "date", "data"};

template <typename Element>
std::string_view name(Element element) {
    return elementNames[static_cast<std::size_t>(element)];
}

// The first bytes of a common tag as one number.
struct TagPattern {
    std::uint64_t bytes;
    std::uint64_t mask;
};

constexpr TagPattern pattern(std::string_view tag) {
    TagPattern result{};
    for (std::size_t i = 0; i < tag.size(); ++i) {
        result.bytes |= std::uint64_t{static_cast<unsigned char>(tag[i])} << 8 * i;
        result.mask |= std::uint64_t{0xff} << 8 * i;
    }
    return result;
}

bool isNameEnd(char c) {
    return isXMLBlank(c) || c == '>' || c == '/' || c == '<';
}

constexpr std::string_view notUTF8 = "the text isn't UTF-8";

/// Whether a character reference may have this code point. NUL would end a path.
constexpr bool isCharacter(std::uint32_t codePoint) {
    return codePoint != 0 && codePoint <= 0x10ffff && (codePoint < 0xd800 || codePoint > 0xdfff);
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

XMLTokenizer::XMLTokenizer(std::string_view document)
    : m_expected(Expected::prolog), m_expectedAfterValue(Expected::closingOfDocument) {
    const std::string_view text = convertXMLToUTF8(document, m_converted);
    m_begin = m_position = text.data();
    m_end = m_begin + text.size();
}

// MARK: Characters

void XMLTokenizer::fail(const char* where, std::string_view problem) const {
    throw PropertyListError::inText(problem, {m_begin, m_end}, static_cast<std::size_t>(where - m_begin));
}

template <std::size_t N>
bool XMLTokenizer::skip(const char (&literal)[N]) {
    constexpr std::size_t length = N - 1;
    if (remaining() < length || std::memcmp(m_position, literal, length) != 0)
        return false;
    m_position += length;
    return true;
}

inline void XMLTokenizer::skipWhiteSpace() {
    m_position = skipXMLWhiteSpace(m_position, m_end);
}

void XMLTokenizer::skipPast(std::string_view terminator, std::string_view what) {
    const auto offset = std::string_view(m_position, remaining()).find(terminator);
    if (offset == std::string_view::npos)
        fail(m_position, fmt::format("{} isn't closed", what));
    m_position += offset + terminator.size();
}

/// Skips white space, comments and processing instructions.
void XMLTokenizer::skipBetweenElements() {
    for (;;) {
        skipWhiteSpace();
        if (skip("<!--"))
            skipPast("-->", "a comment");
        else if (skip("<?"))
            skipPast("?>", "a processing instruction");
        else
            return;
    }
}

// MARK: The document around its root

void XMLTokenizer::readProlog() {
    skipBetweenElements();
    while (skip("<!DOCTYPE")) {
        skipDocumentType();
        skipBetweenElements();
    }
    m_expected = Expected::root;
    if (const Tag tag = readUncommonTag(); tag.element != Element::plist || tag.isEnd)
        m_position = m_tagStart;
    else if (tag.isEmpty)
        fail(m_tagStart, "<plist> holds no value");
    else
        m_isInPlist = true;
}

void XMLTokenizer::skipDocumentType() {
    const char* start = m_position;
    while (m_position != m_end) {
        const char c = *m_position++;
        if (c == '>')
            return;
        if (c == '[')
            fail(m_position - 1, "a DOCTYPE with declarations of its own isn't allowed");
        if (c == '"' || c == '\'')
            skipPast({&c, 1}, "a quotation in the DOCTYPE");
    }
    fail(start, "the DOCTYPE isn't closed");
}

void XMLTokenizer::readClosing() {
    m_expected = Expected::nothing;
    skipBetweenElements();
    if (!m_isInPlist && m_position == m_end)
        return;
    if (const Tag tag = readUncommonTag(); !m_isInPlist || tag.element != Element::plist || !tag.isEnd)
        fail(m_tagStart, "more than one value stands at the root");
}

// MARK: Tags

/// Reads the tag at the current position, with its attributes.
inline XMLTokenizer::Tag XMLTokenizer::readTag() {
    constexpr auto key = pattern("<key>"), string = pattern("<string>"), integer = pattern("<integer"),
                   dictionary = pattern("<dict>"), endDictionary = pattern("</dict>"),
                   array = pattern("<array>"), endArray = pattern("</array>");
    if (remaining() > sizeof(std::uint64_t)) {
        const std::uint64_t word = loadWord(m_position);
        const auto isAt = [word](const TagPattern& tag) { return (word & tag.mask) == tag.bytes; };
        const auto found = [this](Tag tag, std::size_t length) {
            m_position += length;
            return tag;
        };
        if (isAt(key))
            return found({Element::key}, 5);
        if (isAt(string))
            return found({Element::string}, 8);
        if (isAt(integer) && m_position[8] == '>')
            return found({Element::integer}, 9);
        if (isAt(dictionary))
            return found({Element::dictionary}, 6);
        if (isAt(endDictionary))
            return found({Element::dictionary, true}, 7);
        if (isAt(array))
            return found({Element::array}, 7);
        if (isAt(endArray))
            return found({Element::array, true}, 8);
    }
    return readUncommonTag();
}

XMLTokenizer::Tag XMLTokenizer::readUncommonTag() {
    skipBetweenElements();
    m_tagStart = m_position;
    if (m_position == m_end)
        fail(m_tagStart, "the document ends too early");
    if (!skip("<"))
        fail(m_tagStart, "text stands between the elements");
    Tag tag{};
    tag.isEnd = skip("/");
    const char* nameEnd = std::find_if(m_position, m_end, isNameEnd);
    const std::string_view given(m_position, static_cast<std::size_t>(nameEnd - m_position));
    const auto known = std::ranges::find(elementNames, given);
    if (known == elementNames.end()) {
        constexpr std::size_t shownLength = 40;
        if (given.empty() || !std::ranges::all_of(given, isLetter))
            fail(m_tagStart, "this is no element of a property list");
        fail(m_tagStart, fmt::format("<{}> is no element of a property list", given.substr(0, shownLength)));
    }
    tag.element = static_cast<Element>(known - elementNames.begin());
    m_position = nameEnd;
    while (m_position != m_end) { // skips the attributes
        const char c = *m_position++;
        if (c == '>')
            return tag;
        if (c == '<' || (tag.isEnd && !isXMLBlank(c)))
            break;
        if (c == '"' || c == '\'')
            skipPast({&c, 1}, "the value of an attribute");
        else if (c == '/' && skip(">")) {
            tag.isEmpty = true;
            return tag;
        }
    }
    fail(m_tagStart, fmt::format("the tag <{}{}> isn't closed", tag.isEnd ? "/" : "", given));
}

void XMLTokenizer::readEndTag(Element element) {
    if (remaining() < 2 || m_position[0] != '<' || m_position[1] != '/')
        fail(m_position, fmt::format("</{}> is missing", name(element)));
    if (const Tag tag = readUncommonTag(); tag.element != element)
        fail(m_tagStart, fmt::format("</{}> stands where </{}> belongs", name(tag.element), name(element)));
}

/// Throws for an unexpected tag.
void XMLTokenizer::failAtTag(Tag tag) const {
    if (m_expected == Expected::root)
        fail(m_tagStart, "no value stands at the root");
    if (m_expected == Expected::value)
        fail(m_tagStart, "a key has no value");
    if (tag.isEnd)
        fail(m_tagStart, fmt::format("</{}> closes nothing", name(tag.element)));
    if (m_expected == Expected::key)
        fail(m_tagStart, fmt::format("<{}> has no key", name(tag.element)));
    fail(m_tagStart, fmt::format("<{}> can't stand here", name(tag.element)));
}

// MARK: Tokens

XMLTokenizer::Token XMLTokenizer::next() {
    if (m_expected >= Expected::prolog) {
        if (m_expected == Expected::prolog)
            readProlog();
        else if (m_expected == Expected::closingOfEmpty)
            return close(m_isDictionary[m_depth - 1] ? Token::endDictionary : Token::endArray);
        else {
            if (m_expected == Expected::closingOfDocument)
                readClosing();
            return Token::end;
        }
    }
    skipWhiteSpace();
    m_tagStart = m_position;
    const Tag tag = readTag();
    if (tag.isEnd) {
        if (tag.element == Element::dictionary && m_expected == Expected::key)
            return close(Token::endDictionary);
        if (tag.element == Element::array && m_expected == Expected::element)
            return close(Token::endArray);
        failAtTag(tag);
    }
    if ((tag.element == Element::key) != (m_expected == Expected::key))
        failAtTag(tag);

    switch (tag.element) {
    case Element::key:
        readText(tag);
        if (!tag.isEmpty && !skip("</key>"))
            readEndTag(tag.element);
        m_expected = Expected::value;
        return Token::key;
    case Element::string:
        readText(tag);
        if (!tag.isEmpty && !skip("</string>"))
            readEndTag(tag.element);
        return finish(Token::string);
    case Element::integer:
        readInteger(tag);
        if (!skip("</integer>"))
            readEndTag(tag.element);
        return finish(Token::integer);
    case Element::dictionary:
        return open(Token::dictionary, tag.isEmpty);
    case Element::array:
        return open(Token::array, tag.isEmpty);
    default:
        return readUncommonScalar(tag);
    }
}

XMLTokenizer::Token XMLTokenizer::readUncommonScalar(Tag tag) {
    Token token = Token::boolean;
    switch (tag.element) {
    case Element::isTrue:
    case Element::isFalse:
        m_boolean = tag.element == Element::isTrue;
        break;
    case Element::real:
        token = Token::real;
        m_real = valid(parseXMLReal(readRaw(tag)), tag);
        break;
    case Element::date:
        token = Token::date;
        m_date = valid(parseXMLDate(readRaw(tag)), tag);
        break;
    case Element::data:
        token = Token::data;
        if (!decodeBase64(readRaw(tag), m_decoded))
            fail(m_tagStart, "<data> doesn't hold whole groups of base64");
        m_text = m_decoded;
        break;
    default:
        failAtTag(tag);
    }
    if (!tag.isEmpty)
        readEndTag(tag.element);
    return finish(token);
}

void XMLTokenizer::skipRest(Token first) {
    if (first != Token::dictionary && first != Token::array)
        return;
    for (const std::size_t depth = m_depth; m_depth >= depth;)
        next();
}

XMLTokenizer::Token XMLTokenizer::open(Token token, bool isEmpty) {
    if (m_depth == maximumDepth)
        fail(m_tagStart, fmt::format("more than {} containers are nested", maximumDepth));
    m_isDictionary[m_depth++] = token == Token::dictionary;
    m_expectedAfterValue = token == Token::dictionary ? Expected::key : Expected::element;
    m_expected = isEmpty ? Expected::closingOfEmpty : m_expectedAfterValue;
    return token;
}

XMLTokenizer::Token XMLTokenizer::close(Token token) {
    --m_depth;
    m_expectedAfterValue = m_depth == 0                  ? Expected::closingOfDocument
                           : m_isDictionary[m_depth - 1] ? Expected::key
                                                         : Expected::element;
    return finish(token);
}

inline XMLTokenizer::Token XMLTokenizer::finish(Token token) {
    m_expected = m_expectedAfterValue;
    return token;
}

// MARK: Contents of elements

/// Reads the text of a key or string, up to its end tag.
inline void XMLTokenizer::readText(Tag tag) {
    if (tag.isEmpty) {
        m_text = {};
        return;
    }
    const char* start = m_position;
    const MarkupScan scan = scanToMarkup(start, m_end);
    m_position = scan.end;
    if (remaining() < 2 || m_position[0] != '<' || m_position[1] != '/')
        return decodeText(tag.element, start);
    m_text = {start, m_position};
    if (!scan.isASCII && !isUTF8(m_text))
        fail(m_tagStart, notUTF8);
}

/// Continues with text that contains references, CDATA or invalid characters.
void XMLTokenizer::decodeText(Element element, const char* start) {
    for (m_decoded.clear();;) {
        m_decoded.append(start, m_position);
        if (remaining() < 2)
            fail(m_tagStart, fmt::format("<{}> isn't closed", name(element)));
        if (*m_position == '&')
            decodeReference();
        else if (m_position[1] == '/')
            break;
        else if (skip("<![CDATA[")) {
            const char* section = m_position;
            skipPast("]]>", "a CDATA section");
            m_decoded.append(section, m_position - std::strlen("]]>"));
        } else
            fail(m_position, fmt::format("<{}> holds more than text", name(element)));
        start = m_position;
        m_position = scanToMarkup(start, m_end).end;
    }
    m_text = m_decoded;
    if (!isUTF8(m_text))
        fail(m_tagStart, notUTF8);
}

void XMLTokenizer::decodeReference() {
    constexpr std::pair<std::string_view, char> named[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    const char* start = m_position;
    const std::string_view rest(m_position, remaining());
    for (const auto& [reference, character] : named)
        if (rest.starts_with(reference)) {
            m_decoded += character;
            m_position += reference.size();
            return;
        }
    if (!skip("&#"))
        fail(start, "& begins no reference that is known");
    const int base = skip("x") ? 16 : 10;
    std::uint32_t scalar = 0;
    const auto [end, failure] = std::from_chars(m_position, m_end, scalar, base);
    m_position = end;
    if (failure != std::errc() || !skip(";") || !isCharacter(scalar))
        fail(start, "a reference names no character");
    appendUTF8(m_decoded, scalar);
}

/// The text of an element that contains no markup.
inline std::string_view XMLTokenizer::readRaw(Tag tag) {
    if (tag.isEmpty)
        return {};
    const char* start = m_position;
    const void* found = std::memchr(m_position, '<', remaining());
    m_position = found ? static_cast<const char*>(found) : m_end;
    return {start, m_position};
}

inline void XMLTokenizer::readInteger(Tag tag) {
    constexpr int safeDigits = 18;
    const char* const last = m_position + std::min<std::size_t>(remaining(), safeDigits);
    std::uint64_t value = 0;
    const char* p = m_position;
    for (; p != last && *p >= '0' && *p <= '9'; ++p)
        value = value * 10 + static_cast<std::uint64_t>(*p - '0');
    if (p == m_position || p == m_end || *p != '<') { // not a plain number
        m_integer = valid(parseXMLInteger(readRaw(tag)), tag);
        return;
    }
    m_position = p;
    m_integer = {value, false};
}

template <typename Value>
Value XMLTokenizer::valid(const std::optional<Value>& value, Tag tag) const {
    if (!value)
        fail(m_tagStart, fmt::format("<{}> doesn't hold a value of its kind", name(tag.element)));
    return *value;
}

} // namespace tallyglass
