#include "HostTools/Machine/ComparisonReport.h"

#include "TallyglassKit/Platform/Files/FileError.h"

#include <fmt/format.h>

#include <cerrno>

namespace tallyglass {

namespace {

constexpr std::size_t pieceSize = 256 * 1024;

std::string operandPrefix(std::string operand) {
    while (operand.ends_with('/'))
        operand.pop_back();
    return operand;
}

/// The length of the valid UTF-8 character at the start of `text` that XML allows, or 0.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    if (length == 0 || text.size() < length)
        return 0;
    for (std::size_t index = 1; index < length; ++index)
        if ((byte(index) & 0xC0) != 0x80)
            return 0;
    if (length < 3)
        return length;
    const unsigned char second = byte(1);
    const bool isOverlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool isOutside = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
    const bool isNoCharacter = first == 0xEF && second == 0xBF && byte(2) > 0xBD; // U+FFFE, U+FFFF
    return isOverlong || isOutside || isNoCharacter ? 0 : length;
}

} // namespace

ComparisonReport::ComparisonReport(std::string older, std::string newer, FILE* output, FILE* warnings)
    : m_older(operandPrefix(std::move(older))), m_newer(operandPrefix(std::move(newer))), m_output(output),
      m_warnings(warnings) {}

void ComparisonReport::differs(const TreeDifference& difference) {
    const auto size = [](const struct stat& status) { return S_ISDIR(status.st_mode) ? 0 : status.st_size; };
    if (!difference.older) {
        m_totals.added += size(*difference.newer);
        added({m_newer, difference.path, *difference.newer});
    } else if (!difference.newer) {
        m_totals.removed += size(*difference.older);
        removed({m_older, difference.path, *difference.older});
    } else {
        m_totals.changed += size(*difference.newer);
        changed({m_older, difference.path, *difference.older}, {m_newer, difference.path, *difference.newer},
                difference.properties);
    }
}

void ComparisonReport::unreadable(const std::string& path, int errorNumber) {
    fmt::print(m_warnings, "tmutil: {}: {}\n", path, errorText(errorNumber));
}

void ComparisonReport::put(std::string_view text) {
    m_buffer.append(text);
    if (m_buffer.size() >= pieceSize)
        flush();
}

void ComparisonReport::flush() {
    const bool isWritten = std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_output) == m_buffer.size();
    if (!isWritten || std::fflush(m_output) != 0)
        throw FileError(errno, "standard output");
    m_buffer.clear();
}

void PropertyListReport::begin() {
    if (m_hasBegun)
        return;
    m_hasBegun = true;
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n\t<key>Changes</key>\n\t<array>\n");
}

void PropertyListReport::added(const Item& item) {
    begin();
    put("\t\t<dict>\n");
    putItem("AddedItem", item);
    put("\t\t</dict>\n");
}

void PropertyListReport::removed(const Item& item) {
    begin();
    put("\t\t<dict>\n");
    putItem("RemovedItem", item);
    put("\t\t</dict>\n");
}

void PropertyListReport::changed(const Item& older, const Item& newer,
                                 std::span<const std::string_view> properties) {
    begin();
    put("\t\t<dict>\n\t\t\t<key>Differences</key>\n\t\t\t<array>\n");
    for (const std::string_view property : properties) {
        put("\t\t\t\t<string>");
        put(property);
        put("</string>\n");
    }
    put("\t\t\t</array>\n");
    putItem("NewerItem", newer);
    putItem("OlderItem", older);
    put("\t\t</dict>\n");
}

void PropertyListReport::putItem(std::string_view key, const Item& item) {
    put("\t\t\t<key>");
    put(key);
    put("</key>\n\t\t\t<dict>\n\t\t\t\t<key>Path</key>\n\t\t\t\t<string>");
    putText(item.root);
    putText(item.isRootFolder() ? "/" : item.path);
    put("</string>\n");
    if (!S_ISDIR(item.status.st_mode)) {
        put("\t\t\t\t<key>Size</key>\n\t\t\t\t<integer>");
        put(fmt::format_int(item.status.st_size).c_str());
        put("</integer>\n");
    }
    put("\t\t\t</dict>\n");
}

void PropertyListReport::putText(std::string_view text) {
    std::size_t plain = 0;
    const auto putInstead = [&](std::size_t start, std::size_t length, std::string_view replacement) {
        put(text.substr(plain, start - plain));
        put(replacement);
        plain = start + length;
    };
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t length = characterLength(text.substr(index));
        const char character = text[index];
        if (character == '&')
            putInstead(index, 1, "&amp;");
        else if (character == '<')
            putInstead(index, 1, "&lt;");
        else if (character == '>')
            putInstead(index, 1, "&gt;");
        else if (character == '\r')
            putInstead(index, 1, "&#13;"); // unescaped, it would be parsed as a line feed
        else if (length == 0 ||
                 (static_cast<unsigned char>(character) < 0x20 && character != '\t' && character != '\n'))
            putInstead(index, 1, "\xEF\xBF\xBD");
        index += length ? length : 1;
    }
    put(text.substr(plain));
}

void PropertyListReport::end() {
    begin();
    put(fmt::format("\t</array>\n\t<key>Totals</key>\n\t<dict>\n"
                    "\t\t<key>AddedSize</key>\n\t\t<integer>{}</integer>\n"
                    "\t\t<key>ChangedSize</key>\n\t\t<integer>{}</integer>\n"
                    "\t\t<key>RemovedSize</key>\n\t\t<integer>{}</integer>\n"
                    "\t</dict>\n</dict>\n</plist>\n",
                    totals().added, totals().changed, totals().removed));
    flush();
}

void TextReport::putLine(char sign, const Item& item, std::string_view remark) {
    const std::string size = S_ISDIR(item.status.st_mode) ? "" : columnSize(item.status.st_size);
    put(fmt::format("{} {:>8}  {}{}{}\n", sign, size, item.root, item.isRootFolder() ? "/" : item.path,
                    remark));
}

void TextReport::added(const Item& item) {
    putLine('+', item, "");
}

void TextReport::removed(const Item& item) {
    putLine('-', item, "");
}

void TextReport::changed(const Item&, const Item& newer, std::span<const std::string_view> properties) {
    putLine('!', newer, fmt::format(" ({})", fmt::join(properties, ", ")));
}

void TextReport::end() {
    put(fmt::format("-------------------------------------\n"
                    "Added:   {:>12}\nRemoved: {:>12}\nChanged: {:>12}\n",
                    columnSize(totals().added), columnSize(totals().removed), columnSize(totals().changed)));
    flush();
}

std::string columnSize(std::int64_t bytes) {
    if (bytes < 1024)
        return fmt::format("{}B", bytes);
    constexpr std::string_view units = "KMGTPE";
    double value = static_cast<double>(bytes) / 1024;
    std::size_t unit = 0;
    for (; value >= 1023.95 && unit + 1 < units.size(); ++unit)
        value /= 1024;
    return fmt::format("{:.1f}{}", value, units[unit]);
}

} // namespace tallyglass
