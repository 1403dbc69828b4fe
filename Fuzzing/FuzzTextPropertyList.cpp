// Old-style property lists of any bytes: they give a list within its bounds or a PropertyListError.

#include "TallyglassKit/Platform/PropertyLists/Internal/TextPropertyListReader.h"

#include "Fuzzing/PropertyListWalk.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    tallyglass::fuzzing::readAndWalk(bytes, tallyglass::readTextPropertyList);
    return 0;
}
