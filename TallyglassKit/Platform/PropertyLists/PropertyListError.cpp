#include "TallyglassKit/Platform/PropertyLists/PropertyListError.h"

#include <fmt/core.h>

#include <algorithm>

namespace tallyglass {

PropertyListError::PropertyListError(std::string_view problem)
    : Error(fmt::format("The property list can't be read: {}.", problem)) {}

PropertyListError PropertyListError::atByte(std::string_view problem, std::size_t offset) {
    return PropertyListError(fmt::format("{}, at byte {}", problem, offset));
}

PropertyListError PropertyListError::inText(std::string_view problem, std::string_view text,
                                            std::size_t offset) {
    const auto before = text.substr(0, std::min(offset, text.size()));
    std::size_t line = 1;
    std::size_t column = 1;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const char c = before[i];
        if (c == '\n' || (c == '\r' && !(i + 1 < text.size() && text[i + 1] == '\n'))) {
            ++line;
            column = 1;
        } else if ((c & 0xC0) != 0x80) { // a continuation byte isn't a column
            ++column;
        }
    }
    return PropertyListError(fmt::format("{}, at line {}, column {}", problem, line, column));
}

} // namespace tallyglass
