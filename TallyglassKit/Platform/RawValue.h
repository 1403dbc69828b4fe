// Enumerations with raw values: `rawValue(x)`, a free function beside each enumeration, gives the text of a
// case in files and command lines, and `fromRawValue<X>(text)` the case of a text.

#pragma once

#include <optional>
#include <string_view>

namespace tallyglass {

/// The case whose raw value is `raw`, if there is one. Specialised beside each enumeration.
template <typename E>
[[nodiscard]] std::optional<E> fromRawValue(std::string_view raw);

} // namespace tallyglass
