// What happened to a path between two snapshots. The raw values are stored in the diff cache.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace tallyglass {

enum class ChangeKind : std::uint8_t { added, removed, modified };

inline constexpr std::array allChangeKinds{ChangeKind::added, ChangeKind::removed, ChangeKind::modified};

[[nodiscard]] std::string_view rawValue(ChangeKind kind);
template <>
[[nodiscard]] std::optional<ChangeKind> fromRawValue<ChangeKind>(std::string_view raw);

/// The label for the user, such as "Added".
[[nodiscard]] std::string_view label(ChangeKind kind);

/// The name of the kind's symbol, such as "plus.circle.fill".
[[nodiscard]] std::string_view symbolName(ChangeKind kind);

} // namespace tallyglass
