// Parses the text of a property list's scalar elements. Values are absent if the text doesn't follow the
// grammar. Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

/// An integer from -2^63 to 2^64-1.
struct XMLInteger {
    std::uint64_t bits = 0;      ///< the value modulo 2^64
    bool isBeyondSigned = false; ///< the value is 2^63 or more

    /// The value, if 64 signed bits hold it.
    [[nodiscard]] std::optional<std::int64_t> asSigned() const {
        return isBeyondSigned ? std::nullopt : std::optional(static_cast<std::int64_t>(bits));
    }
    friend bool operator==(const XMLInteger&, const XMLInteger&) = default;
};

/// White space, a sign, white space, then decimal digits or "0x" and hexadecimal ones.
[[nodiscard]] std::optional<XMLInteger> parseXMLInteger(std::string_view text);

/// White space, a sign, then a decimal number with or without an exponent, or "nan", "inf" or "infinity" in
/// any case. A number beyond the range of a double is absent.
[[nodiscard]] std::optional<double> parseXMLReal(std::string_view text);

/// Exactly "YYYY-MM-DDThh:mm:ssZ". Fields out of range roll over into the next.
[[nodiscard]] std::optional<Date> parseXMLDate(std::string_view text);

/// Decodes Base64, padded to whole groups and with white space anywhere, into `bytes`, which it replaces.
[[nodiscard]] bool decodeBase64(std::string_view text, std::string& bytes);

/// The white space of XML.
[[nodiscard]] constexpr bool isXMLBlank(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

} // namespace tallyglass
