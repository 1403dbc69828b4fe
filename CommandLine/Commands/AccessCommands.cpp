#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/ModelJSON.h"
#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Clock.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tallyglass::commandline {

namespace {

void status(const Context& context) {
    const auto status = context.runner().status(context.stop);
    const auto access = FullDiskAccessProbe::probe(context.paths);
    const auto settings = TimeMachinePreferences().read(context.paths);
    const Date now = systemTime();
    JSON summaries = JSON::array();
    std::string lines;
    for (const auto& destination : settings ? settings->destinations : std::vector<TMDestination>()) {
        const auto health = BackupHealth::analyze(destination, now);
        summaries.push_back({{"destination", destination.displayName()}, {"summary", health.summary()}});
        lines += describe(destination, health) + "\n";
    }
    if (context.json) {
        auto document = toJSON(status);
        document["access"] = rawValue(access);
        document["health"] = summaries;
        return context.print(document);
    }
    context.out << describe(status) << "\n" << lines << describe(access) << "\n";
}

void settings(const Context& context) {
    const auto settings = TimeMachinePreferences().read(context.paths);
    if (context.json)
        return context.print(toJSON(settings));
    if (!settings) {
        context.out << "This computer has no Time Machine settings.\n";
        return;
    }
    context.out << "Automatic backups: " << (settings->autoBackupEnabled ? "on" : "off");
    if (settings->autoBackupInterval)
        context.out << ", every " << Fmt::duration(settings->autoBackupInterval, DurationStyle::full);
    context.out << (settings->requiresACPower ? ", on mains power only" : "") << "\n";
    for (const auto& path : settings->skipPaths)
        context.out << "Excluded: " << path << "\n";
    for (const auto& destination : settings->destinations)
        context.out << "Destination: " << describe(destination) << "\n";
}

void backups(const Context& context) {
    const auto paths = context.runner().backupPathsThrowing(context.stop);
    JSON document = JSON::array();
    for (const auto& path : paths) {
        const auto date = BackupPath::timestampOfRoot(path);
        if (context.json)
            document.push_back({{"path", path}, {"date", toJSON(date)}});
        else
            context.out << (date ? Fmt::timestamp(*date) : "—") << "  " << path << "\n";
    }
    if (context.json)
        context.print(document);
}

void manifest(const Context& context) {
    const auto entries = ManifestReader(context.runner(), context.paths).read(context.stop);
    if (context.json)
        return context.print(toJSONArray(entries));
    for (const auto& entry : entries)
        context.out << fmt::format("{}  took {}, {} changed, {}{}\n", Fmt::timestamp(entry.completionDate),
                                   Fmt::duration(entry.duration(), DurationStyle::abbreviated),
                                   entry.changedCount, Fmt::size(entry.changedLogicalSize),
                                   entry.isInitialBackup ? ", the first" : "");
}

} // namespace

void addAccessCommands(CLI::App& app, Action& chosen) {
    const auto add = [&](const char* name, const char* description, void (*action)(const Context&)) {
        app.add_subcommand(name, description)->callback([&chosen, action] { chosen = action; });
    };
    add("status", "What the backup system is doing, and whether backups can be read", status);
    add("settings", "The settings of Time Machine and its destinations", settings);
    add("backups", "The backups of the destination, oldest first", backups);
    add("manifest", "When each backup ran and how much it changed", manifest);
}

} // namespace tallyglass::commandline
