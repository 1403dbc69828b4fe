// Canonical equivalence of Unicode texts, such as "é" as one code point and as "e" with a combining accent:
// the system's comparison of strings treats them as equal.
//
// Free functions without state; any thread.

#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace tallyglass {

/// The composed form (NFC), which is the same for two texts exactly if they are equivalent. Text that isn't
/// UTF-8 is returned unchanged.
[[nodiscard]] std::string canonicalForm(std::string_view text);

/// Whether the text is in canonical form. Fast for ASCII.
[[nodiscard]] bool isCanonical(std::string_view text);

/// The order of the canonical forms: by code points, independent of locale, case-sensitive.
[[nodiscard]] std::strong_ordering compareCanonically(std::string_view left, std::string_view right);

} // namespace tallyglass
