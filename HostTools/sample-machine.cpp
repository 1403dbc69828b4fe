// Makes a machine with weeks of backups, for looking round in and for tests.

#include "HostTools/Machine/SampleMachine.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/WallClock.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <exception>
#include <optional>

using namespace tallyglass;

namespace {

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

int main(int argc, char** argv) {
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
    CLI11_PARSE(app, argc, argv);

    if (!now.empty()) {
        const auto moment = parseMoment(now);
        if (!moment) {
            fmt::print(stderr, "sample-machine: {} is no moment such as 2026-11-22T19:38:00Z\n", now);
            return 2;
        }
        options.now = *moment;
    }
    options.root = root;
    const bool onTerminal = isatty(STDERR_FILENO);
    if (onTerminal)
        options.progress = [](int done, int total) { fmt::print(stderr, "\rBackup {} of {}", done, total); };
    try {
        makeSampleMachine(options);
    } catch (const std::exception& failure) {
        fmt::print(stderr, "{}sample-machine: {}\n", onTerminal ? "\n" : "", failure.what());
        return 1;
    }
    if (onTerminal)
        fmt::print(stderr, "\n");
    fmt::print("The sample machine is ready. Enter it with TALLYGLASS_ROOT={}\n",
               std::filesystem::absolute(options.root).string());
    return 0;
}
