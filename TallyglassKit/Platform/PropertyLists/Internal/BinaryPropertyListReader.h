// Reads the binary form of property lists ("bplist0").

#pragma once

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <string_view>

namespace tallyglass {

/// Whether bytes begin like a binary list.
[[nodiscard]] bool isBinaryPropertyList(std::string_view bytes);

/// Reads a binary list into `storage` and returns its root. Objects that aren't reachable from the root are
/// ignored. Throws PropertyListError.
[[nodiscard]] PropertyListValue readBinaryPropertyList(std::string_view bytes, PropertyListStorage& storage);

} // namespace tallyglass
