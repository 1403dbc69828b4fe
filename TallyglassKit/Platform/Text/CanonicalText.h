// Texts that Unicode calls canonically equivalent, such as "é" as one character and as "e" with an accent,
// are one text to the system's comparison of strings. Here is the form by which they agree.
//
// Free functions without state; any thread.

#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace tallyglass {

/// The composed form (NFC), the same for two texts exactly when they are equivalent. Its bytes are in the
/// order of the characters' code points. Text that isn't UTF-8 stays as it is.
[[nodiscard]] std::string canonicalForm(std::string_view text);

/// Whether the canonical form is the text itself: for plain ASCII without looking any further.
[[nodiscard]] bool isCanonical(std::string_view text);

/// The order of the canonical forms: by code points, with no regard to locale, and case counts.
[[nodiscard]] std::strong_ordering compareCanonically(std::string_view left, std::string_view right);

} // namespace tallyglass
