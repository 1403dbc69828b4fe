#include "HostTools/Machine/StatusText.h"

#include <fmt/core.h>

#include <algorithm>

namespace tallyglass {

namespace {

bool isPlain(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

/// The UTF-8 character at `index` as UTF-16 escapes `\Uxxxx`; advances `index` past it.
std::string escaped(const std::string& text, std::size_t& index) {
    const auto lead = static_cast<unsigned char>(text[index++]);
    std::uint32_t code = lead < 0xE0 ? lead & 0x1F : lead < 0xF0 ? lead & 0x0F : lead & 0x07;
    while (index < text.size() && (static_cast<unsigned char>(text[index]) & 0xC0) == 0x80)
        code = code << 6 | (static_cast<unsigned char>(text[index++]) & 0x3F);
    if (code < 0x10000)
        return fmt::format("\\U{:04x}", code);
    code -= 0x10000;
    return fmt::format("\\U{:04x}\\U{:04x}", 0xD800 + (code >> 10), 0xDC00 + (code & 0x3FF));
}

std::string quotedWhereNeeded(const std::string& text) {
    if (!text.empty() && std::ranges::all_of(text, isPlain))
        return text;
    std::string result = "\"";
    for (std::size_t index = 0; index < text.size();) {
        const char character = text[index];
        if (static_cast<unsigned char>(character) >= 0x80) {
            result += escaped(text, index);
            continue;
        }
        if (character == '"' || character == '\\')
            result += '\\';
        result += character == '\n' ? std::string("\\n") : std::string(1, character);
        ++index;
    }
    return result + '"';
}

void append(const StatusDictionary& dictionary, const std::string& indent, std::string& result) {
    result += "{\n";
    for (const auto& [key, value] : dictionary.entries) {
        result += fmt::format("{}    {} = ", indent, quotedWhereNeeded(key));
        if (const auto* integer = std::get_if<std::int64_t>(&value))
            result += quotedWhereNeeded(std::to_string(*integer));
        else if (const auto* number = std::get_if<double>(&value))
            result += quotedWhereNeeded(fmt::format("{}", *number));
        else if (const auto* text = std::get_if<std::string>(&value))
            result += quotedWhereNeeded(*text);
        else {
            result += "    ";
            append(std::get<StatusDictionary>(value), indent + "    ", result);
        }
        result += ";\n";
    }
    result += indent + "}";
}

} // namespace

std::string StatusDictionary::text() const {
    std::string result;
    append(*this, "", result);
    return result;
}

} // namespace tallyglass
