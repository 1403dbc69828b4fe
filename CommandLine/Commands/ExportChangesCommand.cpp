#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CommonArguments.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedComparison.h"
#include "CommandLine/Commands/ProgressLine.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Insight/ChangeExport.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

#include <memory>
#include <optional>
#include <string>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string comparison;
    std::string file;
    std::string format = std::string(rawValue(ExportFormat::csv));
    std::string order = std::string(rawValue(ChangeOrder::path));
};

void exportChanges(const Context& context, const Arguments& arguments) {
    auto store = context.openStore();
    const auto comparison = finishedComparisonNamed(context, store, arguments.comparison, "");
    std::int64_t rows = 0;
    {
        ProgressLine line;
        rows = ChangeExport::write(
            store, comparison, std::nullopt, fromRawValue<ChangeOrder>(arguments.order).value(),
            fromRawValue<ExportFormat>(arguments.format).value(), arguments.file,
            [&](std::int64_t done, std::int64_t total) {
                line.show(
                    fmt::format("Exporting {} of {} changes…", formatGrouped(done), formatGrouped(total)));
            },
            context.stop);
    }
    if (context.json)
        return printExportedChangesJSON(context.out, comparison, arguments.file, rows);
    context.out << fmt::format("Saved {} {} in {}\n", formatGrouped(rows), rows == 1 ? "change" : "changes",
                               arguments.file);
}

} // namespace

Command exportChangesCommand() {
    const auto values = std::make_shared<Arguments>();
    return {"export-changes",
            "Saves all changes of a finished comparison for other programs",
            {
                {"COMPARISON", "Its ID, or its newer backup for the comparison with the one before it",
                 &values->comparison},
                {"FILE", "The file to write, or to replace once the new one is complete", &values->file},
                {.name = "--format",
                 .description = "The format of the file (csv)",
                 .value = &values->format,
                 .type = "csv|json",
                 .choices = {"csv", "json"}},
                sortArgument(values->order),
            },
            [values](const Context& context) { exportChanges(context, *values); }};
}

} // namespace tallyglass::commandline
