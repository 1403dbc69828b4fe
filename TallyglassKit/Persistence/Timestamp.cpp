#include "TallyglassKit/Persistence/Timestamp.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tallyglass {

namespace {

using namespace std::chrono;

constexpr std::int64_t millisecondsPerDay = 86'400'000;
constexpr sys_days firstDay = year{0} / January / 1;
constexpr sys_days lastDay = year{9999} / December / 31;

void writeDigits(char* end, int count, std::int64_t value) {
    for (; count > 0; --count, value /= 10)
        *--end = static_cast<char>('0' + value % 10);
}

/// Parses the parts of a timestamp from the front of a text.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    [[nodiscard]] bool atEnd() const { return m_rest.empty(); }

    bool take(char character) {
        if (!m_rest.starts_with(character))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    /// Exactly `count` digits.
    bool takeNumber(std::size_t count, int& number) {
        const auto digits = m_rest.substr(0, count);
        if (digits.size() != count || !std::ranges::all_of(digits, isDigit))
            return false;
        number = 0;
        for (const char digit : digits)
            number = number * 10 + (digit - '0');
        m_rest.remove_prefix(count);
        return true;
    }

    /// One or more digits, as a fraction of 1.
    bool takeFraction(double& fraction) {
        double scale = 1;
        fraction = 0;
        for (; !m_rest.empty() && isDigit(m_rest.front()); m_rest.remove_prefix(1)) {
            if (scale < 1e15) { // the digits that a double can hold
                scale *= 10;
                fraction = fraction * 10 + (m_rest.front() - '0');
            }
        }
        fraction /= scale;
        return scale > 1;
    }

    /// "Z", or "+hh:mm" with or without the colon; the offset in seconds.
    bool takeZone(int& offset) {
        if (take('Z'))
            return true;
        const int sign = take('+') ? 1 : take('-') ? -1 : 0;
        int zoneHours = 0;
        int zoneMinutes = 0;
        if (sign == 0 || !takeNumber(2, zoneHours))
            return false;
        take(':');
        if (!takeNumber(2, zoneMinutes) || zoneHours > 23 || zoneMinutes > 59)
            return false;
        offset = sign * (zoneHours * 3600 + zoneMinutes * 60);
        return true;
    }

private:
    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    std::string_view m_rest;
};

} // namespace

TimestampText::TimestampText(Date date) {
    const double exact = std::round(secondsSince1970(date) * 1000);
    constexpr auto least = static_cast<double>(firstDay.time_since_epoch().count() * millisecondsPerDay);
    constexpr auto most =
        static_cast<double>((lastDay.time_since_epoch().count() + 1) * millisecondsPerDay - 1);
    const auto total = std::isnan(exact) ? 0 : static_cast<std::int64_t>(std::clamp(exact, least, most));

    const milliseconds sinceEpoch(total);
    const auto day = floor<days>(sys_time<milliseconds>(sinceEpoch));
    const year_month_day calendar(day);
    const hh_mm_ss time(sys_time<milliseconds>(sinceEpoch) - day);
    constexpr std::string_view shape = "0000-00-00 00:00:00.000";
    std::ranges::copy(shape, m_characters.begin());
    char* start = m_characters.data();
    writeDigits(start + 4, 4, static_cast<int>(calendar.year()));
    writeDigits(start + 7, 2, static_cast<unsigned>(calendar.month()));
    writeDigits(start + 10, 2, static_cast<unsigned>(calendar.day()));
    writeDigits(start + 13, 2, time.hours().count());
    writeDigits(start + 16, 2, time.minutes().count());
    writeDigits(start + 19, 2, time.seconds().count());
    writeDigits(start + 23, 3, time.subseconds().count());
}

std::optional<Date> parseTimestamp(std::string_view text) {
    Scanner scanner(text);
    int yearNumber = 0;
    int monthNumber = 0;
    int dayNumber = 0;
    if (!scanner.takeNumber(4, yearNumber) || !scanner.take('-') || !scanner.takeNumber(2, monthNumber) ||
        !scanner.take('-') || !scanner.takeNumber(2, dayNumber))
        return std::nullopt;
    const auto calendar = year{yearNumber} / monthNumber / dayNumber;
    if (!calendar.ok())
        return std::nullopt;

    int hour = 0;
    int minute = 0;
    int second = 0;
    double fraction = 0;
    int zoneOffset = 0;
    if (!scanner.atEnd()) {
        if (!(scanner.take(' ') || scanner.take('T')) || !scanner.takeNumber(2, hour) || !scanner.take(':') ||
            !scanner.takeNumber(2, minute))
            return std::nullopt;
        if (scanner.take(':') && !scanner.takeNumber(2, second))
            return std::nullopt;
        if (scanner.take('.') && !scanner.takeFraction(fraction))
            return std::nullopt;
        if (hour > 23 || minute > 59 || second > 59)
            return std::nullopt;
        scanner.take(' ');
        if (!scanner.atEnd() && (!scanner.takeZone(zoneOffset) || !scanner.atEnd()))
            return std::nullopt;
    }
    const auto whole = sys_days(calendar).time_since_epoch().count() * std::int64_t{86400} + hour * 3600 +
                       minute * 60 + second - zoneOffset;
    // One rounding only, so that a date of whole milliseconds is the nearest double to it.
    return dateSince1970((static_cast<double>(whole) * 1000 + fraction * 1000) / 1000);
}

Date asStored(Date date) {
    return parseTimestamp(TimestampText(date)).value_or(date);
}

} // namespace tallyglass
