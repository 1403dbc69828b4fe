#include "TallyglassKit/Insight/FileVersion.h"

#include <array>
#include <bit>
#include <charconv>

namespace tallyglass {

namespace {

double modifiedSeconds(const FileVersion& version) {
    return version.modified ? secondsSince1970(*version.modified) : -1.0;
}

template <typename Number>
std::string decimal(std::optional<Number> number) {
    return number ? std::to_string(*number) : "-";
}

/// The shortest decimal that reads back as `value`, with ".0" for a whole number.
std::string shortest(double value) {
    std::array<char, 400> digits{}; // the longest double has 309 before the point
    char* const end = std::to_chars(digits.begin(), digits.end(), value, std::chars_format::fixed).ptr;
    std::string text(digits.data(), end);
    if (text.find_first_not_of("-0123456789") == std::string::npos)
        text += ".0";
    return text;
}

} // namespace

std::string FileVersion::fingerprint() const {
    return decimal(inode) + "|" + decimal(size) + "|" + shortest(modifiedSeconds(*this));
}

bool FileVersion::isSameVersion(const FileVersion& other) const {
    // Bits, because different texts are written for zeros of different sign.
    return inode == other.inode && size == other.size &&
           std::bit_cast<std::uint64_t>(modifiedSeconds(*this)) ==
               std::bit_cast<std::uint64_t>(modifiedSeconds(other));
}

} // namespace tallyglass
