#include "TallyglassKit/Platform/PropertyLists/Internal/XMLEncoding.h"

#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstddef>

namespace tallyglass {

using namespace std::string_view_literals;

namespace {

/// The value of `encoding` in the XML declaration, or nothing.
std::string_view declaredEncoding(std::string_view document) {
    constexpr auto blanks = " \t\r\n"sv;
    if (!document.starts_with("<?xml"))
        return {};
    std::string_view rest = document.substr(0, document.find("?>"));
    const auto name = rest.find("encoding");
    if (name == rest.npos)
        return {};
    rest.remove_prefix(name + "encoding"sv.size());
    for (const auto expected : {"="sv, "\"'"sv}) {
        const auto offset = rest.find_first_not_of(blanks);
        if (offset == rest.npos || expected.find(rest[offset]) == expected.npos)
            return {};
        rest.remove_prefix(offset);
        if (expected == "="sv)
            rest.remove_prefix(1);
    }
    const auto end = rest.find(rest.front(), 1);
    return end == rest.npos ? std::string_view() : rest.substr(1, end - 1);
}

bool isSameName(std::string_view name, std::string_view lowerCase) {
    return std::ranges::equal(name, lowerCase, [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == static_cast<unsigned char>(b);
    });
}

std::string_view convertLatin1(std::string_view document, std::string& buffer) {
    buffer.reserve(document.size());
    for (const char c : document)
        appendUTF8(buffer, static_cast<unsigned char>(c));
    return buffer;
}

} // namespace

std::string_view convertXMLToUTF8(std::string_view document, std::string& buffer) {
    if (document.starts_with("\xff\xfe"))
        return buffer = utf8FromUTF16(document.substr(2), std::endian::little);
    if (document.starts_with("\xfe\xff"))
        return buffer = utf8FromUTF16(document.substr(2), std::endian::big);
    if (constexpr auto mark = "\xef\xbb\xbf"sv; document.starts_with(mark))
        return document.substr(mark.size());

    const std::string_view declared = declaredEncoding(document);
    if (declared.empty() || isSameName(declared, "utf-8") || isSameName(declared, "us-ascii"))
        return document;
    if (isSameName(declared, "iso-8859-1"))
        return convertLatin1(document, buffer);
    throw PropertyListError("the document declares an encoding other than UTF-8 and ISO-8859-1");
}

} // namespace tallyglass
