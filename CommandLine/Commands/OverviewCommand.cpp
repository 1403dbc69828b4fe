#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CompareBackups.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Insight/ChangeExplanation.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Insight/StorageTreeLoading.h"

#include <algorithm>

namespace tallyglass::commandline {

namespace {

constexpr std::size_t latestShown = 10;
constexpr std::int64_t largestShown = 10;

void overview(const Context& context) {
    const auto runner = context.runner();
    auto store = context.openStore();
    const auto status = runner.status(context.stop);
    const auto settings = TimeMachinePreferences().read(context.paths);
    const auto backups = DiffEngine(runner, store).availableBackupsThrowing(context.stop);
    const auto latest = std::span(backups).last(std::min(backups.size(), latestShown));

    if (!context.json) {
        context.out << "State: " << describe(status) << "\n";
        for (const auto& destination : settings ? settings->destinations : std::vector<TMDestination>())
            context.out << "Destination: " << describe(destination) << "\n";
        context.out << "Latest backups:\n";
        for (const auto& backup : latest)
            context.out << "  " << describe(backup) << "\n";
        context.out << std::flush; // shows this before the long comparison
    }
    std::optional<ComparisonResult> result;
    std::optional<ChangeExplanation> explanation;
    std::vector<ChangeRecord> largest;
    if (backups.size() >= 2) {
        const auto& from = backups[backups.size() - 2];
        const auto& to = backups.back();
        result = compareBackups(context, store, from.path, to.path, CompareOptions::fast(), true);
        explanation = ChangeExplanation::explain(
            loadStorageTree(store, result->comparison, std::nullopt, context.stop));
        largest = store.changes(result->comparison.id, ChangeOrder::size, largestShown, context.stop);
    }
    if (context.json)
        return printOverviewJSON(context.out, status, settings, latest, result, explanation, largest);
    if (!result) {
        context.out << "There is nothing to compare until there are two backups.\n";
        return;
    }
    context.out << "From the backup before to the latest" << (result->cached ? ", out of the cache" : "")
                << ": " << describe(result->comparison) << "\n"
                << explanation->sentence << "\n";
    if (!largest.empty())
        context.out << "Biggest changes:\n";
    printChanges(context.out, largest);
}

} // namespace

Command overviewCommand() {
    return {
        "overview", "State, destinations, the latest backups and what changed in the last one", {}, overview};
}

} // namespace tallyglass::commandline
