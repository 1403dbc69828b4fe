// Documents of any bytes: they give a list within its bounds or a PropertyListError.

#include "TallyglassKit/Platform/PropertyLists/Internal/XMLPropertyListReader.h"

#include "Fuzzing/PropertyListWalk.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    tallyglass::fuzzing::readAndWalk(bytes, tallyglass::readXMLPropertyList);
    return 0;
}
