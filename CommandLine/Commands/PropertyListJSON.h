// Property lists as JSON, in which every kind of value can be told from the others.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstdint>
#include <iosfwd>

namespace tallyglass {

/// What printPropertyListJSON() writes at most: a binary list that shares its values can stand for more than
/// any disk holds.
inline constexpr std::uint64_t mostPropertyListJSON = std::uint64_t{4} << 30;

/// Writes `root` as one JSON document without a line break at its end. Text, arrays, dictionaries, integers,
/// booleans and null are what they are in JSON; the others are objects of one member: {"real": 0.5},
/// {"date": seconds since 2001}, {"data": "hexadecimal"}, {"uid": 1} and {"set": [...]}. A number that JSON
/// can't hold is the text "nan", "inf" or "-inf".
///
/// Throws Error, with nothing written, if the document would take more than `most` bytes by a count that
/// takes 1 for each value and its bytes for text and data. Neither step recurses.
void printPropertyListJSON(PropertyListValue root, std::ostream& output,
                           std::uint64_t most = mostPropertyListJSON);

} // namespace tallyglass
