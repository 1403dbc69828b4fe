// Conversions between text, reals and integers by the rules of the system's number and string objects,
// independent of locale. Pure; any thread.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tallyglass {

/// The whole text as a real: decimal or hexadecimal, with or without exponent, "inf", "infinity" or "nan" in
/// any case. White space isn't allowed. Overflow gives infinity.
[[nodiscard]] std::optional<double> doubleOfText(std::string_view text);

/// The whole text as an integer: decimal digits after an optional sign; absent if it doesn't fit.
[[nodiscard]] std::optional<std::int64_t> integerOfText(std::string_view text);

/// A text as a boolean: true if its first character after white space, one sign and zeros is a digit from 1
/// to 9 or one of "YyTt", as in "YES", "true" and "01".
[[nodiscard]] bool booleanOfText(std::string_view text);

/// `real` truncated toward zero. Absent if that doesn't fit, or for NaN.
[[nodiscard]] std::optional<std::int64_t> truncated(double real);

} // namespace tallyglass
