#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/ProgressLine.h"
#include "TallyglassKit/Insight/CompareBenchmark.h"
#include "TallyglassKit/Insight/DiagnosticsCapture.h"

#include <fmt/core.h>

#include <memory>
#include <optional>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string into;
    std::int64_t pairs = 3;
    std::int64_t depth = 3;
};

void diagnostics(const Context& context, const Arguments& arguments) {
    const auto into =
        arguments.into.empty() ? std::nullopt : std::optional<std::filesystem::path>(arguments.into);
    DiagnosticsDump dump;
    {
        ProgressLine line;
        dump = captureDiagnostics(
            context.runner(), into, arguments.depth,
            [&](const std::string& label) { line.show(label + "…"); }, context.stop);
    }
    if (context.json)
        return printJSON(context.out, dump);
    context.out << dump.summary() << "\n";
    for (const auto& step : dump.steps)
        context.out << fmt::format("{:<4}  {}\n      {}\n", step.succeeded() ? "OK" : "FAIL", step.label,
                                   step.error ? *step.error : fmt::format("{} bytes", step.byteCount));
    context.out << "Saved in " << dump.directory.string() << "\n";
}

void benchmark(const Context& context, const Arguments& arguments) {
    std::vector<BenchmarkResult> results;
    {
        ProgressLine line;
        line.show("Listing backups…");
        const auto backups = context.runner().backupPathsThrowing(context.stop);
        results = CompareBenchmark::run(
            context.runner(), backups, arguments.pairs, arguments.depth,
            [&](const std::string& text) { line.show(fmt::format("Timing {}…", text)); }, context.stop);
    }
    if (context.json)
        return printJSON(context.out, results);
    context.out << CompareBenchmark::report(results);
}

Command command(std::string name, std::string description, void (*action)(const Context&, const Arguments&),
                Argument (*ownArgument)(Arguments&), std::string depthDescription) {
    const auto values = std::make_shared<Arguments>();
    return {std::move(name),
            std::move(description),
            {ownArgument(*values), {"--depth", std::move(depthDescription), &values->depth, "N"}},
            [values, action](const Context& context) { action(context, *values); }};
}

} // namespace

std::vector<Command> insightCommands() {
    return {
        command(
            "diagnostics", "Saves what tmutil says to a series of questions, for a report on a problem",
            diagnostics,
            [](Arguments& values) {
                return Argument{"--into", "The folder to save it in (Tallyglass Diagnostics on your desktop)",
                                &values.into, "FOLDER"};
            },
            "Compare the last two backups this many folders deep (3)"),
        command(
            "benchmark", "Measures what comparisons cost, with sets of properties and several at once",
            benchmark,
            [](Arguments& values) {
                return Argument{"--pairs",
                                "Measure each set of properties over this many pairs of backups (3)",
                                &values.pairs, "N"};
            },
            "Look this many folders deep (3)"),
    };
}

} // namespace tallyglass::commandline
