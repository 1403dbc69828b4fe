// Conversions between text, reals and integers by the rules of the platform's own number and text objects,
// whatever the locale. Pure; any thread.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tallyglass {

/// The real that the whole text spells: decimal or hexadecimal, with or without exponent, "inf", "infinity"
/// or "nan" in any case. White space isn't part of a number. One too large to hold is infinite.
[[nodiscard]] std::optional<double> doubleOfText(std::string_view text);

/// The integer that the whole text spells in decimal digits behind an optional sign; absent if it doesn't
/// fit.
[[nodiscard]] std::optional<std::int64_t> integerOfText(std::string_view text);

/// A text as a boolean: true if its first character behind white space, one sign and zeros is a digit from 1
/// to 9 or one of "YyTt", so that "YES", "true" and "01" are true.
[[nodiscard]] bool booleanOfText(std::string_view text);

/// `real` cut toward zero. Absent if that doesn't fit, or for what isn't a number.
[[nodiscard]] std::optional<std::int64_t> truncated(double real);

} // namespace tallyglass
