#include "TallyglassKit/Insight/ChangeExport.h"

#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangePages.h"
#include "TallyglassKit/Insight/Internal/BackupProtection.h"
#include "TallyglassKit/Insight/Internal/ChangeDocument.h"
#include "TallyglassKit/Platform/Files/FileDraft.h"

#include <algorithm>
#include <string>

namespace tallyglass {

std::string_view rawValue(ExportFormat format) {
    return format == ExportFormat::csv ? "csv" : "json";
}

template <>
std::optional<ExportFormat> fromRawValue<ExportFormat>(std::string_view raw) {
    for (const ExportFormat format : allExportFormats)
        if (rawValue(format) == raw)
            return format;
    return std::nullopt;
}

std::int64_t ChangeExport::write(BackupStore& store, const Comparison& comparison,
                                 const std::optional<ChangeFilter>& filter, ChangeOrder order,
                                 ExportFormat format, const std::filesystem::path& file,
                                 const OnProgress& progress, const std::stop_token& stop) {
    std::int64_t done = 0;
    const auto report = [&] {
        if (progress)
            progress(done, std::max(done, comparison.totalChanges()));
    };
    report();
    FileDraft draft(outsideBackups(file), FileDraft::Rights::ofOthers, stop);
    ChangeDocument document(format);
    std::string text;
    document.start(text);

    std::int64_t written = 0;
    ChangePages pages(store, comparison, order);
    for (auto page = pages.next(stop); !page.empty(); page = pages.next(stop)) {
        for (const ChangeRecord& row : page)
            if (!filter || filter->keeps(row)) {
                document.append(row, text);
                ++written;
            }
        draft.append(text);
        text.clear();
        done += std::ssize(page);
        report();
    }
    document.end(text);
    draft.append(text);
    draft.publish();
    return written;
}

} // namespace tallyglass
