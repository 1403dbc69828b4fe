#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/BinaryPropertyListReader.h"
#include "TallyglassKit/Platform/PropertyLists/Internal/TextPropertyListReader.h"
#include "TallyglassKit/Platform/PropertyLists/Internal/XMLPropertyListReader.h"

namespace tallyglass {

using namespace std::string_view_literals;

namespace {

// The two text forms can only be confused at "<", which opens an XML element or old-style data in hexadecimal
// digits; no element of a list has a name of such digits alone.
bool isXML(std::string_view bytes) {
    // White space, byte-order marks, and NUL as the other half of a UTF-16 code unit.
    const std::size_t start = bytes.find_first_not_of(" \t\n\v\f\r\xEF\xBB\xBF\xFE\xFF\0"sv);
    if (start == std::string_view::npos || bytes[start] != '<')
        return false;
    const std::size_t end = bytes.find_first_not_of("0123456789abcdefABCDEF \t\n\v\f\r", start + 1);
    return end != std::string_view::npos && bytes[end] != '>';
}

} // namespace

PropertyList PropertyList::parse(std::string_view bytes) {
    if (bytes.empty())
        throw PropertyListError("it is empty");
    if (bytes.size() > mostBytes)
        throw PropertyListError("it is larger than 4 GiB");
    PropertyList list;
    if (isBinaryPropertyList(bytes))
        list.m_root = readBinaryPropertyList(bytes, list.m_storage);
    else if (isXML(bytes))
        list.m_root = readXMLPropertyList(bytes, list.m_storage);
    else
        list.m_root = readTextPropertyList(bytes, list.m_storage);
    return list;
}

} // namespace tallyglass
