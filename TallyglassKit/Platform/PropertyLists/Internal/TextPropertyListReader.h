// Reads the old-style text form of property lists: { key = value; }, ( a, b ), "text" and <0fbd 77>.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <string_view>

namespace tallyglass {

/// Reads UTF-8, or UTF-16 that begins with a byte-order mark, into `storage` and returns the root. Scalars
/// are text or data. White space and comments alone make an empty dictionary. Throws PropertyListError.
[[nodiscard]] PropertyListValue readTextPropertyList(std::string_view bytes, PropertyListStorage& storage);

} // namespace tallyglass
