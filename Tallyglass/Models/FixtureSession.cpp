#include "Tallyglass/Models/FixtureSession.h"

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/Internal/FixtureHistory.h"
#include "Tallyglass/Models/Internal/FixtureTimer.h"
#include "Tallyglass/Models/Internal/FixtureTool.h"
#include "TallyglassKit/Comparison/CacheSession.h"

#include <chrono>
#include <memory>

namespace tallyglass {

namespace {

/// Seconds that the load of a session without end has lasted, and those between two readings of the status
/// where the rate is measured.
double passedTime(std::string_view name, const FixtureMachine& machine) {
    if (name == "changes-waiting" || name == "history-running" || name == "diagnostics-running")
        return 2;
    if (name == "changes-running" || name == "changes-network")
        return 75;
    return machine.rate ? AppModel::runningInterval : 0;
}

ScreenActions actionsOf(std::string_view name, const FixtureMachine& machine) {
    using enum ScreenActions::Work;
    ScreenActions actions{.stopsBackup = machine.stopFailure.has_value(),
                          .comparing = none,
                          .expandedFolders = {"/Users", "/Users/alex"},
                          .traces = name.starts_with("history-"),
                          .tracesForever = name == "history-running"};
    if (name == "history-none")
        actions.tracedPath = "/Users/alex/Documents/Never backed up.txt";
    else if (actions.traces)
        actions.tracedPath = FixtureHistory::tracedPath;
    if (name.starts_with("compare-") && name != "compare-ready") {
        actions.comparing = name == "compare-running" ? begin : finish;
        actions.liftsDepthLimit = name == "compare-failure";
        actions.comparesAll = name == "compare-backfill";
    }
    if (name.starts_with("diagnostics-"))
        actions.capturing = name == "diagnostics-running" ? begin : finish;
    if (name == "diagnostics-running" || name == "diagnostics-results")
        actions.benchmarking = actions.capturing;
    actions.togglesExclusion = name == "exclusions-failure";
    if (name == "changes-waiting" || name == "history-running")
        actions.changes = {.elapsed = "0:02", .hasReceived = false};
    else if (name == "changes-running" || name == "changes-network")
        actions.changes = {.elapsed = "1:15", .hasReceived = true};
    return actions;
}

AppEnvironment environmentOf(const std::shared_ptr<FixtureTool>& tool, double passed) {
    AppEnvironment result(
        tool->files().paths(),
        TMUtilRunner([tool](const TMUtilRunner::Arguments& arguments, std::chrono::milliseconds,
                            const TMUtilRunner::OnBytes& onBytes,
                            const std::stop_token& stop) { return tool->run(arguments, onBytes, stop); }));
    result.clock = [tool] { return tool->now(); };
    result.makeTimer = [passed] { return std::make_unique<FixtureTimer>(passed); };
    result.probeAccess = [access = tool->machine().access] { return access; };
    result.cache = std::make_shared<CacheSession>(result.runner, tool->files().cache());
    result.defaults = UserDefaults(tool->files().defaults());
    result.desktopFolder = [tool] { return tool->files().desktop(); };
    result.probeTime = std::chrono::hours(24);
    result.userName = [] { return std::string("alex"); };
    return result;
}

} // namespace

std::span<const std::string_view> FixtureSession::names() {
    return FixtureMachine::names();
}

std::optional<FixtureSession> FixtureSession::make(std::string_view name, Date now) {
    const auto machine = FixtureMachine::make(name, now);
    if (!machine)
        return std::nullopt;
    const auto tool = std::make_shared<FixtureTool>(name, now);
    if (name == "diagnostics-failure")
        tool->files().write(tool->files().desktop(), {});
    return FixtureSession{.environment = environmentOf(tool, passedTime(name, *machine)),
                          .actions = actionsOf(name, *machine),
                          .measuresRate = machine->rate.has_value()};
}

} // namespace tallyglass
