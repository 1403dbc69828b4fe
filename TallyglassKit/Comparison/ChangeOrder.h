// The orders in which the rows of a comparison are listed. The raw values are what commands take.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tallyglass {

enum class ChangeOrder : std::uint8_t {
    path, ///< by the bytes of the path
    size, ///< the largest absolute size delta, or else size, first; equal ones by path
    name, ///< by the bytes of the last component; equal ones by path
};

inline constexpr std::array allChangeOrders{ChangeOrder::path, ChangeOrder::size, ChangeOrder::name};

[[nodiscard]] std::string_view rawValue(ChangeOrder order);
template <>
[[nodiscard]] std::optional<ChangeOrder> fromRawValue<ChangeOrder>(std::string_view raw);

} // namespace tallyglass
