// Moments as the database holds them: text "yyyy-MM-dd HH:mm:ss.SSS" in UTC. Pure functions; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <array>
#include <optional>
#include <string_view>

namespace tallyglass {

class TimestampText {
public:
    /// Rounds to the millisecond, which reading gives back exactly. A date outside the years 0 to 9999
    /// becomes the nearest one inside.
    explicit TimestampText(Date date);

    operator std::string_view() const { return {m_characters.data(), m_characters.size()}; }

private:
    std::array<char, 23> m_characters;
};

/// Reads what TimestampText writes, and what else is told apart without doubt: a date alone, a time without
/// seconds or with any fraction, "T" for the blank, and a zone at the end. Nothing for everything else.
[[nodiscard]] std::optional<Date> parseTimestamp(std::string_view text);

/// The moment as the database gives it back.
[[nodiscard]] Date asStored(Date date);

} // namespace tallyglass
