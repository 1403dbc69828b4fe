// Property lists as JSON, with a distinct form for every kind of value.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstdint>
#include <iosfwd>

namespace tallyglass {

/// The limit of printPropertyListJSON(): a binary list with shared values can expand to more than any disk
/// holds.
inline constexpr std::uint64_t mostPropertyListJSON = std::uint64_t{4} << 30;

/// Writes `root` as one JSON document without a trailing line break. Text, arrays, dictionaries, integers,
/// booleans and null have their JSON forms; the others are objects with one member: {"real": 0.5}, {"date":
/// seconds since 2001}, {"data": "hexadecimal"}, {"uid": 1} and {"set": [...]}. A number that JSON can't
/// represent is the text "nan", "inf" or "-inf".
///
/// Throws Error, with nothing written, if the document would take more than `most` bytes, counting 1 for each
/// value and the bytes of text and data. Not recursive.
void printPropertyListJSON(PropertyListValue root, std::ostream& output,
                           std::uint64_t most = mostPropertyListJSON);

} // namespace tallyglass
