#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Clock.h"

#include <fmt/core.h>

namespace tallyglass::commandline {

namespace {

void printHealth(std::ostream& out, const TMDestination& destination, const BackupHealth& health, Date now) {
    const auto shortly = [](double seconds) { return Fmt::duration(seconds, DurationStyle::abbreviated); };
    out << describe(destination, health) << "\n";
    out << fmt::format("  Level: {}\n  Last backup {}, typically every {}\n", rawValue(health.level()),
                       Fmt::relative(destination.latestSnapshot(), now),
                       Fmt::duration(health.medianInterval, DurationStyle::abbreviated));
    if (health.usedFraction)
        out << fmt::format("  Used: {:.0f} %\n", *health.usedFraction * 100);
    if (health.lastBackupResult)
        out << fmt::format("  Last result: {}{}{}\n", *health.lastBackupResult,
                           health.lastBackupReason() ? ", " : "", health.lastBackupReason().value_or(""));
    for (const Date attempt : health.suspectedFailedAttempts)
        out << "  Suspected failed backup: " << Fmt::timestamp(attempt) << "\n";
    for (const auto& gap : health.gaps)
        out << fmt::format("  Longer than usual: {} · {} → {}\n", shortly(gap.duration()),
                           Fmt::timestamp(gap.start), Fmt::timestamp(gap.end));
}

void health(const Context& context) {
    const auto settings = TimeMachinePreferences().read(context.paths);
    const auto destinations = settings ? settings->destinations : std::vector<TMDestination>();
    const Date now = systemTime();
    std::vector<DestinationHealth> healths;
    for (const auto& destination : destinations)
        healths.push_back({destination, BackupHealth::analyze(destination, now)});
    if (context.json)
        return printJSON(context.out, healths);
    for (const auto& [destination, health] : healths)
        printHealth(context.out, destination, health, now);
    if (destinations.empty())
        context.out << "This computer has no backup destination.\n";
}

} // namespace

Command healthCommand() {
    return {"health", "How well the backups of each destination are, and why", {}, health};
}

} // namespace tallyglass::commandline
