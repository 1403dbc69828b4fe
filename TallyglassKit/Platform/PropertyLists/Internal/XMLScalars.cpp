#include "TallyglassKit/Platform/PropertyLists/Internal/XMLScalars.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <limits>

namespace tallyglass {

namespace {

void removeBlanks(std::string_view& text) {
    while (!text.empty() && isXMLBlank(text.front()))
        text.remove_prefix(1);
}

bool removeSign(std::string_view& text) {
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return false;
    const bool isNegative = text.front() == '-';
    text.remove_prefix(1);
    return isNegative;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr std::uint8_t invalidSextet = 0xff;
constexpr auto sextets = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(invalidSextet);
    std::uint8_t value = 0;
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
        table[static_cast<unsigned char>(c)] = value++;
    return table;
}();

} // namespace

std::optional<XMLInteger> parseXMLInteger(std::string_view text) {
    removeBlanks(text);
    const bool isNegative = removeSign(text);
    removeBlanks(text);
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    std::uint64_t magnitude = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    constexpr std::uint64_t signedBound = std::uint64_t{1} << 63;
    if (!isNegative)
        return XMLInteger{magnitude, magnitude >= signedBound};
    if (magnitude > signedBound)
        return std::nullopt;
    return XMLInteger{0 - magnitude, false};
}

std::optional<double> parseXMLReal(std::string_view text) {
    removeBlanks(text);
    const bool isNegative = removeSign(text);
    // from_chars would accept a second sign, and "nan(...)".
    if (text.empty() || text.front() == '-' || text.back() == ')')
        return std::nullopt;
    double magnitude = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return isNegative ? -magnitude : magnitude;
}

std::optional<Date> parseXMLDate(std::string_view text) {
    constexpr std::string_view pattern = "0000-00-00T00:00:00Z";
    const auto fits = [](char c, char model) { return model == '0' ? isDigit(c) : c == model; };
    if (!std::ranges::equal(text, pattern, fits))
        return std::nullopt;
    const auto number = [&](std::size_t offset, std::size_t length) {
        int value = 0;
        for (const char c : text.substr(offset, length))
            value = value * 10 + (c - '0');
        return value;
    };
    // Months roll over here, the smaller fields by the addition.
    const auto month =
        std::chrono::year(number(0, 4)) / std::chrono::January + std::chrono::months(number(5, 2) - 1);
    const auto days = std::chrono::sys_days(month / 1).time_since_epoch().count() + number(8, 2) - 1;
    return dateSince1970(
        static_cast<double>(days * 86400 + number(11, 2) * 3600 + number(14, 2) * 60 + number(17, 2)));
}

bool decodeBase64(std::string_view text, std::string& bytes) {
    bytes.clear();
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    int sextetCount = 0; // in the current group, with its padding
    int paddingCount = 0;
    for (const char c : text) {
        if (isXMLBlank(c))
            continue;
        if (c == '=') {
            if (sextetCount < 2)
                return false;
            ++paddingCount;
            group <<= 6;
        } else {
            const std::uint8_t sextet = sextets[static_cast<unsigned char>(c)];
            if (sextet == invalidSextet || paddingCount > 0)
                return false;
            group = group << 6 | sextet;
        }
        if (++sextetCount < 4)
            continue;
        for (int shift = 16; shift >= 8 * paddingCount; shift -= 8)
            bytes += static_cast<char>(group >> shift & 0xff);
        group = 0;
        sextetCount = 0;
    }
    return sextetCount == 0;
}

} // namespace tallyglass
