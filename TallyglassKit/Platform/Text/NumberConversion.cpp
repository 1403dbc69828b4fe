#include "TallyglassKit/Platform/Text/NumberConversion.h"

#include <locale.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace tallyglass {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

locale_t posixLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

std::optional<double> doubleOfText(std::string_view text) {
    if (text.empty() || whiteSpace.find(text.front()) != std::string_view::npos)
        return std::nullopt; // strtod would skip white space
    const std::string terminated(text);
    char* end = nullptr;
    const double value = strtod_l(terminated.c_str(), &end, posixLocale());
    return end == terminated.data() + terminated.size() ? std::optional(value) : std::nullopt;
}

std::optional<std::int64_t> integerOfText(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    return failure == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

bool booleanOfText(std::string_view text) {
    const auto skip = [&text](std::string_view characters) {
        text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    };
    skip(whiteSpace);
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    skip("0");
    return !text.empty() && std::string_view("123456789YyTt").find(text.front()) != std::string_view::npos;
}

std::optional<std::int64_t> truncated(double real) {
    constexpr double limit = 9223372036854775808.0; // 2^63; both bounds are exact as doubles
    return real >= -limit && real < limit ? std::optional(static_cast<std::int64_t>(real)) : std::nullopt;
}

} // namespace tallyglass
