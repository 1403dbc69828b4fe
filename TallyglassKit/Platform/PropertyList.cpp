#include "TallyglassKit/Platform/PropertyList.h"

#include <cstdint>

namespace tallyglass {

PropertyList PropertyList::parse(std::string_view bytes) {
    if (bytes.empty())
        throw PropertyListError("it is empty");
    if (bytes.size() > UINT32_MAX)
        throw PropertyListError("it is larger than 4 GiB");
    throw PropertyListError("its form is unknown");
}

} // namespace tallyglass
