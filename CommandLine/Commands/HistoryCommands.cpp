#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedBackups.h"
#include "CommandLine/Commands/ProgressLine.h"
#include "TallyglassKit/Access/BackupName.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Insight/FileHistoryScanner.h"
#include "TallyglassKit/Insight/VersionExport.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string path;
    std::string volume;
    std::string backup = "latest";
    std::string destination;
    bool replace = false;

    /// The path on its volume.
    [[nodiscard]] std::string logicalPath() const {
        auto normalized = FileHistoryScanner::normalize(path);
        if (normalized.empty())
            throw Error("The path is empty.");
        return normalized;
    }
    [[nodiscard]] std::optional<std::string> chosenVolume() const {
        return volume.empty() ? std::nullopt : std::optional(volume);
    }
};

std::string countOf(std::int64_t count, const char* noun) {
    return fmt::format("{} {}{}", formatGrouped(count), noun, count == 1 ? "" : "s");
}

void printHistory(std::ostream& out, const FileHistory& history) {
    if (history.spans.empty()) {
        out << "Not found in any backup; checked " << countOf(history.probedCount(), "backup") << ".\n";
        return;
    }
    out << fmt::format("{}: {} in {} of {}\n", history.path,
                       countOf(static_cast<std::int64_t>(history.spans.size()), "version"),
                       formatGrouped(history.probedCount() - history.missingCount()),
                       countOf(history.probedCount(), "backup"));
    for (const auto& span : history.spans) {
        const auto& version = span.version;
        out << fmt::format("{}  {:>9}  in {}", BackupName::of(version.backupRoot),
                           version.isDirectory ? "folder" : Fmt::size(version.size),
                           countOf(span.backupCount(), "backup"));
        if (span.backupCount() > 1)
            out << " since " << BackupName::of(span.backups.front().backupRoot);
        if (version.modified)
            out << ", modified " << Fmt::timestamp(*version.modified);
        out << "\n";
    }
}

void trace(const Context& context, const Arguments& arguments) {
    FileHistory history{.path = arguments.logicalPath(), .versions = {}, .spans = {}};
    const FileHistoryScanner scanner(context.runner());
    const auto roots = existingBackups(context);
    {
        ProgressLine line;
        history.versions = scanner.versions(
            history.path, arguments.chosenVolume(), roots,
            [&](std::size_t index, std::size_t count) {
                line.show(fmt::format("Checking backup {} of {}…", index, count));
            },
            context.stop);
    }
    if (context.stop.stop_requested())
        throw Cancelled();
    history.spans = FileHistoryScanner::spans(history.versions);
    std::ranges::reverse(history.spans); // the newest first
    if (context.json)
        return printJSON(context.out, history);
    printHistory(context.out, history);
}

std::string describe(const CopyProgress& progress) {
    if (progress.totalBytes)
        return fmt::format("Exporting… {} of {}", Fmt::size(progress.bytes), Fmt::size(progress.totalBytes));
    return fmt::format("Exporting… {}, {}", countOf(progress.items, "item"), Fmt::size(progress.bytes));
}

/// A folder isn't replaced unless that is asked for: whoever types one may mean a place in it.
void protectFolder(const std::string& destination) {
    if (const auto status = FileStatus::of(destination); status && status->isFolder())
        throw FileError(EISDIR, destination,
                        "This is a folder; name the copy in it, or replace the whole folder with --replace");
}

void exportItem(const Context& context, const Arguments& arguments) {
    const auto path = arguments.logicalPath();
    const std::vector<std::string> roots{backupNamed(context, arguments.backup)};
    const auto versions =
        FileHistoryScanner(context.runner()).versions(path, arguments.chosenVolume(), roots);
    if (versions.empty())
        throw Error("There is no volume in the backup " + BackupName::of(roots.front()) + ".");
    Export done{.version = versions.front(),
                .destination = std::filesystem::absolute(arguments.destination).lexically_normal(),
                .progress = {}};
    if (done.version.exists && !arguments.replace)
        protectFolder(done.destination);
    {
        ProgressLine line;
        exportVersion(
            done.version, done.destination,
            [&](const CopyProgress& progress) {
                done.progress = progress;
                line.show(describe(progress));
            },
            context.stop);
    }
    if (context.json)
        return printJSON(context.out, done);
    context.out << fmt::format("Exported {}, {}, to {}\n", countOf(done.progress.items, "item"),
                               Fmt::size(done.progress.bytes), done.destination);
}

Command command(std::string name, std::string description, void (*action)(const Context&, const Arguments&),
                void (*addArguments)(std::vector<Argument>&, Arguments&)) {
    const auto values = std::make_shared<Arguments>();
    std::vector<Argument> arguments{
        {.name = "PATH",
         .description = "The path as it is on the computer, such as /Users/anna/notes.txt",
         .value = &values->path},
        {"--volume", "The volume that it is on; else the first one in each backup", &values->volume, "NAME"}};
    if (addArguments)
        addArguments(arguments, *values);
    return {std::move(name), std::move(description), std::move(arguments),
            [values, action](const Context& context) { action(context, *values); }};
}

} // namespace

std::vector<Command> historyCommands() {
    return {
        command("trace", "The versions of a file or folder in all backups, newest first", trace, nullptr),
        command("export", "Copies a file or folder out of a backup, whole or not at all", exportItem,
                [](std::vector<Argument>& arguments, Arguments& values) {
                    arguments.push_back({"DESTINATION", "The path of the copy; a file there is replaced",
                                         &values.destination});
                    arguments.push_back(
                        {"--backup", "The backup to take it from (latest)", &values.backup, "BACKUP"});
                    arguments.push_back(
                        {"--replace", "Replace DESTINATION even if it is a folder", &values.replace});
                }),
    };
}

} // namespace tallyglass::commandline
