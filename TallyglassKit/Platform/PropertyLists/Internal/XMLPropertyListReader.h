// Reads the XML form of property lists.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <string_view>

namespace tallyglass {

/// Reads a list in XML into `storage` and returns its root. Throws PropertyListError.
[[nodiscard]] PropertyListValue readXMLPropertyList(std::string_view bytes, PropertyListStorage& storage);

} // namespace tallyglass
