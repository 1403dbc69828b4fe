// Writes the XML property lists of a made-up machine. Pure; any thread. A value is given as its element;
// entries of a dictionary whose value is the empty text are left out.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyglass::fixture {

[[nodiscard]] std::string text(std::string_view value);
[[nodiscard]] std::string integer(std::int64_t value);
[[nodiscard]] std::string boolean(bool value);
/// Cut to whole seconds, as the format wants it.
[[nodiscard]] std::string date(Date value);
[[nodiscard]] std::string array(std::span<const std::string> elements);
[[nodiscard]] std::string dictionary(const std::vector<std::pair<std::string_view, std::string>>& entries);

[[nodiscard]] std::string propertyList(std::string_view root);

} // namespace tallyglass::fixture
