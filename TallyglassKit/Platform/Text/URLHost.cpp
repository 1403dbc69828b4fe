#include "TallyglassKit/Platform/Text/URLHost.h"

#include "TallyglassKit/Platform/Text/UTF8.h"

#include <algorithm>
#include <charconv>

namespace tallyglass {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isScheme(std::string_view text) {
    const auto follows = [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; };
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, follows);
}

// Whether a host may contain the character unencoded. Bytes beyond ASCII may: names aren't always encoded.
bool isHostCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte > 0x20 && byte != 0x7f &&
           std::string_view("\"<>[\\]^`{|}:").find(c) == std::string_view::npos;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (text.front() != '%') {
            decoded += text.front();
            continue;
        }
        unsigned char byte = 0;
        const std::string_view digits = text.substr(1, 2);
        const char* const end = digits.data() + digits.size();
        if (digits.size() < 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end)
            return std::nullopt;
        decoded += static_cast<char>(byte);
        text.remove_prefix(2);
    }
    return isUTF8(decoded) ? std::optional(decoded) : std::nullopt;
}

} // namespace

std::optional<std::string> hostOfURL(std::string_view url) {
    const auto slashes = url.find("//");
    if (slashes == std::string_view::npos)
        return std::nullopt;
    const std::string_view scheme = url.substr(0, slashes);
    if (!scheme.empty() && !(scheme.ends_with(':') && isScheme(scheme.substr(0, scheme.size() - 1))))
        return std::nullopt;

    std::string_view authority = url.substr(slashes + 2);
    authority = authority.substr(0, authority.find_first_of("/?#"));
    authority = authority.substr(authority.rfind('@') + 1); // npos + 1 is 0

    const bool isAddress = authority.starts_with('[');
    const auto end = isAddress ? authority.find(']') : std::min(authority.find(':'), authority.size());
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view host = authority.substr(isAddress, end - isAddress);
    const std::string_view port = authority.substr(end + isAddress);
    if (!port.empty() && !(port.front() == ':' && std::ranges::all_of(port.substr(1), isDigit)))
        return std::nullopt;

    const auto mayStand = [isAddress](char c) { return isHostCharacter(c) || (isAddress && c == ':'); };
    if (host.empty() || !std::ranges::all_of(host, mayStand))
        return std::nullopt;
    return percentDecoded(host);
}

} // namespace tallyglass
