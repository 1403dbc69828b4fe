#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Clock.h"

#include <fmt/core.h>

namespace tallyglass::commandline {

namespace {

void status(const Context& context) {
    const auto status = context.runner().status(context.stop);
    const auto access = FullDiskAccessProbe::probe(context.paths);
    const auto settings = TimeMachinePreferences().read(context.paths);
    const Date now = systemTime();
    std::vector<DestinationHealth> healths;
    for (const auto& destination : settings ? settings->destinations : std::vector<TMDestination>())
        healths.push_back({destination, BackupHealth::analyze(destination, now)});
    if (context.json)
        return printStatusJSON(context.out, status, access, healths);
    context.out << describe(status) << "\n";
    for (const auto& [destination, health] : healths)
        context.out << describe(destination, health) << "\n";
    context.out << describe(access) << "\n";
}

void settings(const Context& context) {
    const auto settings = TimeMachinePreferences().read(context.paths);
    if (context.json)
        return printJSON(context.out, settings);
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
    std::vector<DiffEngine::Backup> backups;
    for (const auto& path : paths)
        backups.push_back({path, BackupPath::timestampOfRoot(path)});
    if (context.json)
        return printJSON(context.out, backups);
    for (const auto& backup : backups)
        context.out << describe(backup) << "\n";
}

void manifest(const Context& context) {
    const auto entries = ManifestReader(context.runner(), context.paths).read(context.stop);
    if (context.json)
        return printJSON(context.out, entries);
    for (const auto& entry : entries)
        context.out << fmt::format("{}  took {}, {} changed, {}{}\n", Fmt::timestamp(entry.completionDate),
                                   Fmt::duration(entry.duration(), DurationStyle::abbreviated),
                                   entry.changedCount, Fmt::size(entry.changedLogicalSize),
                                   entry.isInitialBackup ? ", the first" : "");
}

} // namespace

std::vector<Command> accessCommands() {
    return {
        {"status", "What the backup system is doing, and whether backups can be read", {}, status},
        {"settings", "The settings of Time Machine and its destinations", {}, settings},
        {"backups", "The backups of the destination, oldest first", {}, backups},
        {"manifest", "When each backup ran and how much it changed", {}, manifest},
    };
}

} // namespace tallyglass::commandline
