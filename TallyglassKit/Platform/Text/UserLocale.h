// The language and region in which values are formatted, and the time zone for dates. Every function that
// formats for the user takes one, by default the user's own.
//
// A value; any thread.

#pragma once

#include <string>

namespace tallyglass {

struct UserLocale {
    std::string identifier; ///< language and region, such as "en_US" or "tr"
    std::string timeZone;   ///< an IANA name, such as "Europe/Berlin"; the machine's time zone if unknown

    /// The user's, as set in the environment when this was first called. An environment without a language,
    /// such as LANG=C, counts as English (United States).
    [[nodiscard]] static const UserLocale& current();

    friend bool operator==(const UserLocale&, const UserLocale&) = default;
};

} // namespace tallyglass
