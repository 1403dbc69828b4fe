// Byte counts in the user's language, as file browsers show them: decimal units, "12.3 MB". Any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <cstdint>
#include <string>

namespace tallyglass {

/// English results: 0 is "Zero KB", 1 "1 byte", 999 "999 bytes", 1000 "1 KB", 12345678 "12.3 MB", 1234567898
/// "1.23 GB", -1023 "-1 KB".
///
/// No fraction for bytes and KB, up to one digit for MB, up to two above, rounded half to even. A count that
/// would round to a thousand of its unit uses the next one: 999499 is "999 KB" and 999500 "1 MB".
[[nodiscard]] std::string formatByteCount(std::int64_t bytes,
                                          const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
