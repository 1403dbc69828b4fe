#include "TallyglassKit/Insight/Internal/ChangeDocument.h"

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <iterator>

namespace tallyglass {

namespace {

/// What makes a spreadsheet take a cell for a formula, at its beginning.
constexpr std::string_view formulaStarts = "=+-@\t\r";
constexpr std::string_view quotedCharacters = ",\"\r\n";

std::string cell(std::string_view bytes) {
    auto text = decodeUTF8(bytes);
    if (!text.empty() && formulaStarts.find(text.front()) != formulaStarts.npos)
        text.insert(0, 1, '\'');
    if (text.find_first_of(quotedCharacters) == text.npos)
        return text;
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"')
            quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string cell(std::optional<std::int64_t> number) {
    return number ? fmt::format("{}", *number) : std::string();
}

void appendCSV(const ChangeRecord& row, std::string& text) {
    fmt::format_to(std::back_inserter(text), "{},{},{},{},{},{},{}\r\n", cell(row.path), cell(row.fileName()),
                   rawValue(row.kind), row.isDirectory, cell(row.size), cell(row.sizeDelta),
                   row.differences ? cell(row.differences->string()) : std::string());
}

nlohmann::ordered_json orNull(std::optional<std::int64_t> number) {
    return number ? nlohmann::ordered_json(*number) : nlohmann::ordered_json();
}

void appendJSON(const ChangeRecord& row, std::string& text) {
    const nlohmann::ordered_json object{
        {"path", decodeUTF8(row.path)},
        {"name", decodeUTF8(row.fileName())},
        {"kind", rawValue(row.kind)},
        {"isDirectory", row.isDirectory},
        {"size", orNull(row.size)},
        {"sizeDelta", orNull(row.sizeDelta)},
        {"differences", row.differences ? nlohmann::ordered_json(decodeUTF8(row.differences->string()))
                                        : nlohmann::ordered_json()},
    };
    text += object.dump();
}

} // namespace

void ChangeDocument::start(std::string& text) const {
    if (m_format == ExportFormat::csv)
        text += "path,name,kind,isDirectory,size,sizeDelta,differences\r\n";
    else
        text += "[";
}

void ChangeDocument::append(const ChangeRecord& row, std::string& text) {
    if (m_format == ExportFormat::csv) {
        appendCSV(row, text);
    } else {
        text += m_hasRows ? ",\n" : "\n";
        appendJSON(row, text);
    }
    m_hasRows = true;
}

void ChangeDocument::end(std::string& text) const {
    if (m_format == ExportFormat::json)
        text += m_hasRows ? "\n]\n" : "]\n";
}

} // namespace tallyglass
