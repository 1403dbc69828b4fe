// Reads the binary form of property lists ("bplist0").

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <string_view>

namespace tallyglass {

/// Whether bytes claim to be a binary list.
[[nodiscard]] bool isBinaryPropertyList(std::string_view bytes);

/// Reads a binary list into `storage` and returns its root. Objects that no path from the root reaches are
/// left unread. Throws PropertyListError.
[[nodiscard]] PropertyListValue readBinaryPropertyList(std::string_view bytes, PropertyListStorage& storage);

} // namespace tallyglass
