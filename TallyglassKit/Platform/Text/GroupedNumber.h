// Whole numbers with the digit grouping of the user's locale: "12,345".
// Any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <cstdint>
#include <string>

namespace tallyglass {

[[nodiscard]] std::string formatGrouped(std::int64_t number,
                                        const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
