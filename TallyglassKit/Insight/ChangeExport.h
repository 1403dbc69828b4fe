// Saves the rows of a comparison as a document for other programs. Static operations only; any thread.
//
// CSV is as RFC 4180 has it: a header, lines that end with CR LF, quotation marks around a cell with a comma,
// a quotation mark or a line end. An apostrophe goes before a text that a spreadsheet would take for a
// formula. JSON is an array of objects, one a line. Both have path, name, kind, isDirectory, size, sizeDelta
// and differences, absent values empty in the one and null in the other, in UTF-8; invalid bytes become
// U+FFFD.

#pragma once

#include "TallyglassKit/Comparison/ChangeOrder.h"
#include "TallyglassKit/Platform/RawValue.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string_view>

namespace tallyglass {

class BackupStore;
class ChangeFilter;
struct Comparison;

enum class ExportFormat : std::uint8_t { csv, json };

inline constexpr std::array allExportFormats{ExportFormat::csv, ExportFormat::json};

/// Also the extension of the file's name.
[[nodiscard]] std::string_view rawValue(ExportFormat format);
template <>
[[nodiscard]] std::optional<ExportFormat> fromRawValue<ExportFormat>(std::string_view raw);

struct ChangeExport {
    /// Called on the writing thread with the number of rows read so far and of all.
    using OnProgress = std::function<void(std::int64_t done, std::int64_t total)>;

    /// Writes all rows that the filter keeps to `file`, whose folder must exist, and returns their number.
    /// The file appears, or replaces an existing one, in one step at the end; after a failure or a stop
    /// everything is as before (see FileDraft).
    ///
    /// Throws FileError, EROFS for a file in a backup; ComparisonChanged; DatabaseError; Cancelled.
    static std::int64_t write(BackupStore& store, const Comparison& comparison,
                              const std::optional<ChangeFilter>& filter, ChangeOrder order,
                              ExportFormat format, const std::filesystem::path& file,
                              const OnProgress& progress = {}, const std::stop_token& stop = {});
};

} // namespace tallyglass
