// Why bytes can't be parsed as a property list: the problem and its position. Immutable; any thread may read
// it.

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <cstddef>
#include <string_view>

namespace tallyglass {

class PropertyListError : public Error {
public:
    /// `problem` is a phrase such as "the file is empty".
    explicit PropertyListError(std::string_view problem);

    /// A problem at a byte of a binary list.
    [[nodiscard]] static PropertyListError atByte(std::string_view problem, std::size_t offset);

    /// A problem at the byte `offset` of `text`, reported as line and column. Columns count characters, from
    /// 1.
    [[nodiscard]] static PropertyListError inText(std::string_view problem, std::string_view text,
                                                  std::size_t offset);
};

} // namespace tallyglass
