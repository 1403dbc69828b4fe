#include "HostTools/Machine/ToolArguments.h"

#include "HostTools/Machine/CompareCommand.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/WallClock.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <cstdio>
#include <ctime>

namespace tallyglass {

namespace {

/// Parses the arguments; throws UsageError for invalid ones.
void parse(CLI::App& app, const std::vector<std::string>& arguments) {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        throw UsageError(app.help());
    } catch (const CLI::ParseError& failure) {
        throw UsageError(failure.what());
    }
}

/// "2026-11-22T19:38:00Z", or without the Z as this machine's local time.
std::optional<Date> parseMoment(const std::string& text) {
    std::tm fields{};
    const char* end = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &fields);
    if (!end)
        return std::nullopt;
    if (std::string_view(end) == "Z")
        return dateSince1970(static_cast<double>(timegm(&fields)));
    if (*end)
        return std::nullopt;
    return WallClock{.year = fields.tm_year + 1900,
                     .month = fields.tm_mon + 1,
                     .day = fields.tm_mday,
                     .hour = fields.tm_hour,
                     .minute = fields.tm_min,
                     .second = fields.tm_sec}
        .date();
}

} // namespace

MachineSetup parseSetup(const std::vector<std::string>& arguments) {
    CLI::App app("Makes a machine whose backups this program keeps, or adds a destination to it",
                 "tmutil setup");
    MachineSetup setup;
    std::vector<std::string> sources;
    std::string destination;
    app.add_option("--source", sources, "A folder to back up; may be given more than once");
    app.add_option("--destination", destination, "The folder that holds the backups")->required();
    app.add_option("--name", setup.destinationName, "The destination's name; its folder's without it");
    app.add_option("--volume", setup.volumeName, "The sources' volume in the backups (Data)");
    app.add_option("--quota", setup.quota, "The most bytes that the backups may take");
    parse(app, arguments);
    setup.sources.assign(sources.begin(), sources.end());
    setup.destination = destination;
    return setup;
}

Arrangement parseArrangement(const std::vector<std::string>& arguments) {
    CLI::App app("Brings about conditions that are rare or slow to come by", "tmutil arrange");
    Arrangement arrangement;
    app.add_option("--permission", arrangement.permission, "Whether programs may read backups")
        ->check(CLI::IsMember({"granted", "revoked"}));
    app.add_option("--next-result", arrangement.nextResult, "The result code that the next backup ends with")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--copy-limit", arrangement.copyLimit,
                   "The most KiB a second that backups copy; 0 for no limit")
        ->check(CLI::NonNegativeNumber);
    parse(app, arguments);
    return arrangement;
}

SampleMachineCall parseSampleMachine(int argc, char** argv) {
    CLI::App app("Makes a sample machine with about two months of backups.");
    SampleMachineOptions options{.root = {}, .now = systemTime(), .progress = {}};
    std::string root;
    std::string now;
    app.add_option("ROOT", root, "Folder for the machine; must be empty or new")->required();
    app.add_option("--backups", options.backups, "How many backups")
        ->check(CLI::Range(1, 5000))
        ->capture_default_str();
    app.add_option("--files", options.files, "How many files there are at first")
        ->check(CLI::Range(10, 10'000'000))
        ->capture_default_str();
    app.add_option("--seed", options.seed, "The same seed and moment make the same machine")
        ->capture_default_str();
    app.add_option("--now", now,
                   "The machine's present, such as 2026-11-22T19:38:00Z; the real one without it");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& failure) {
        return {.options = {}, .exitCode = app.exit(failure)};
    }

    if (!now.empty()) {
        const auto moment = parseMoment(now);
        if (!moment) {
            fmt::print(stderr, "sample-machine: {} is no moment such as 2026-11-22T19:38:00Z\n", now);
            return {.options = {}, .exitCode = 2};
        }
        options.now = *moment;
    }
    options.root = root;
    return {.options = options, .exitCode = 0};
}

} // namespace tallyglass
