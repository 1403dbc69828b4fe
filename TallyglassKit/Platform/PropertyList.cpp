#include "TallyglassKit/Platform/PropertyList.h"

#include "TallyglassKit/Platform/BinaryPropertyListReader.h"
#include "TallyglassKit/Platform/TextPropertyListReader.h"

#include <cstdint>

namespace tallyglass {

PropertyList PropertyList::parse(std::string_view bytes) {
    if (bytes.empty())
        throw PropertyListError("it is empty");
    if (bytes.size() > UINT32_MAX)
        throw PropertyListError("it is larger than 4 GiB");
    PropertyList list;
    if (isBinaryPropertyList(bytes))
        list.m_root = readBinaryPropertyList(bytes, list.m_storage);
    else
        list.m_root = readTextPropertyList(bytes, list.m_storage);
    return list;
}

} // namespace tallyglass
