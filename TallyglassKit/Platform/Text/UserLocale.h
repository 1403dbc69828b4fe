// Whose words and whose clock on the wall: the language and region in which values are shown, and the time
// zone in which dates are. Every function that makes text for a user takes one, and the user's own without
// one.
//
// A value; any thread.

#pragma once

#include <string>

namespace tallyglass {

struct UserLocale {
    std::string identifier; ///< language and region, such as "en_US" or "tr"
    std::string timeZone;   ///< Olson name, such as "Europe/Berlin"; the machine's when it is unknown

    /// The user's, as the environment and the machine had it when this was first called. An environment
    /// without a language, such as LANG=C, counts as English (United States).
    [[nodiscard]] static const UserLocale& current();

    friend bool operator==(const UserLocale&, const UserLocale&) = default;
};

} // namespace tallyglass
