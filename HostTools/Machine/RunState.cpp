#include "HostTools/Machine/RunState.h"

#include "HostTools/Machine/MachinePaths.h"
#include "HostTools/Machine/PlistDocument.h"
#include "HostTools/Machine/StatusText.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

struct Phase {
    BackupPhase phase;
    std::string_view name;
    double barStart; ///< the progress when the phase begins
    double barEnd;
};

constexpr std::array phases{
    Phase{BackupPhase::starting, "Starting", 0, 0},
    Phase{BackupPhase::findingVolume, "FindingBackupVol", 0, 0},
    Phase{BackupPhase::findingChanges, "FindingChanges", 0, 0.1},
    Phase{BackupPhase::copying, "Copying", 0.1, 0.9},
    Phase{BackupPhase::finishing, "Finishing", 0.9, 1},
};

const Phase& descriptionOf(BackupPhase phase) {
    return *std::ranges::find(phases, phase, &Phase::phase);
}

constexpr auto clientID = "com.apple.backupd";

fs::path stateFile(const MachinePaths& machine) {
    return machine.runFolder() / "running.plist";
}
fs::path lockFile(const MachinePaths& machine) {
    return machine.runFolder() / "running.lock";
}
fs::path stopFile(const MachinePaths& machine) {
    return machine.runFolder() / "stop";
}

/// "2026-11-22 19:38:00 +0000".
std::string inUTC(Date date) {
    const auto seconds = static_cast<std::time_t>(secondsSince1970(date));
    std::tm fields{};
    char text[64];
    gmtime_r(&seconds, &fields);
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S +0000", &fields)};
}

} // namespace

std::string_view phaseName(BackupPhase phase) {
    return descriptionOf(phase).name;
}

std::string RunState::idleStatusText() {
    return StatusDictionary{{{"ClientID", clientID}, {"Percent", "-1"}, {"Running", std::int64_t{0}}}}.text();
}

std::string RunState::statusText(bool isStopping) const {
    const Phase& description = descriptionOf(phase);
    StatusDictionary status{{{"BackupPhase", std::string(description.name)},
                             {"ClientID", clientID},
                             {"DateOfStateChange", inUTC(stateChange)},
                             {"Running", std::int64_t{1}},
                             {"Stopping", std::int64_t{isStopping}}}};
    auto& entries = status.entries;
    if (!destinationID.empty()) {
        entries["DestinationID"] = destinationID;
        entries["DestinationMountPoint"] = mountPoint;
    }
    double done = 0;
    if (phase == BackupPhase::findingChanges) {
        done = fractionDone.value_or(0);
        entries["FractionDone"] = done;
        entries["NumberOfChangedItems"] = changedItems;
    } else if (phase == BackupPhase::copying) {
        done = totalBytes > 0 ? static_cast<double>(bytes) / static_cast<double>(totalBytes) : 1;
        StatusDictionary progress{{{"Percent", done},
                                   {"_raw_Percent", done},
                                   {"_raw_totalBytes", totalBytes},
                                   {"bytes", bytes},
                                   {"files", files},
                                   {"sizingFreePreflight", std::int64_t{1}},
                                   {"totalBytes", totalBytes},
                                   {"totalFiles", totalFiles}}};
        if (timeRemaining)
            progress.entries["TimeRemaining"] = *timeRemaining;
        entries["NumberOfChangedItems"] = changedItems;
        entries["Progress"] = std::move(progress);
    } else {
        entries["Percent"] = "-1";
    }
    entries["FractionOfProgressBar"] =
        description.barStart + done * (description.barEnd - description.barStart);
    return status.text();
}

std::optional<FileLock> RunFiles::take(const MachinePaths& machine) {
    auto lock = FileLock::attempt(lockFile(machine));
    if (lock)
        clear(machine); // left by a killed backup
    return lock;
}

void RunFiles::write(const MachinePaths& machine, const RunState& state) {
    const PlistDocument document = PlistDocument::dictionary();
    const PlistNode root = document.root();
    root.set("phase", phaseName(state.phase));
    root.set("stateChange", state.stateChange);
    root.set("destinationID", state.destinationID);
    root.set("mountPoint", state.mountPoint);
    root.set("changedItems", state.changedItems);
    root.set("bytes", state.bytes);
    root.set("totalBytes", state.totalBytes);
    root.set("files", state.files);
    root.set("totalFiles", state.totalFiles);
    if (state.fractionDone)
        root.set("fractionDone", *state.fractionDone);
    if (state.timeRemaining)
        root.set("timeRemaining", *state.timeRemaining);
    replaceFile(stateFile(machine), document.binary(), Durability::memory);
}

void RunFiles::clear(const MachinePaths& machine) {
    fs::remove(stateFile(machine));
    fs::remove(stopFile(machine));
}

std::optional<RunState> RunFiles::read(const MachinePaths& machine) {
    if (!FileLock::isHeld(lockFile(machine)))
        return std::nullopt;
    const auto document = PlistDocument::read(stateFile(machine));
    if (!document)
        return RunState{}; // it holds the lock and hasn't written its state yet
    const PlistNode root = document->root();
    const auto phase = std::ranges::find(phases, root.text("phase").value_or(""), &Phase::name);
    return RunState{.phase = phase == phases.end() ? BackupPhase::starting : phase->phase,
                    .stateChange = root.date("stateChange").value_or(Date()),
                    .destinationID = root.text("destinationID").value_or(""),
                    .mountPoint = root.text("mountPoint").value_or(""),
                    .fractionDone = root.real("fractionDone"),
                    .changedItems = root.integer("changedItems").value_or(0),
                    .bytes = root.integer("bytes").value_or(0),
                    .totalBytes = root.integer("totalBytes").value_or(0),
                    .files = root.integer("files").value_or(0),
                    .totalFiles = root.integer("totalFiles").value_or(0),
                    .timeRemaining = root.real("timeRemaining")};
}

void RunFiles::requestStop(const MachinePaths& machine) {
    replaceFile(stopFile(machine), "", Durability::memory);
}

bool RunFiles::isStopRequested(const MachinePaths& machine) {
    return fs::exists(stopFile(machine));
}

} // namespace tallyglass
