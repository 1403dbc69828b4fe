#include "HostTools/Machine/Commands.h"

#include "HostTools/Machine/BackgroundBackup.h"
#include "HostTools/Machine/CompareCommand.h"
#include "HostTools/Machine/ExclusionCommands.h"
#include "HostTools/Machine/HostPreferences.h"
#include "HostTools/Machine/MachineSetup.h"
#include "HostTools/Machine/PlistDocument.h"
#include "HostTools/Machine/RunState.h"
#include "HostTools/Machine/Snapshots.h"
#include "HostTools/Machine/ToolArguments.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>

namespace tallyglass {

namespace {

using Arguments = std::vector<std::string>;

/// The environment of a verb.
struct Call {
    const MachinePaths& machine;
    const Arguments& arguments; ///< after the verb
    FILE* output;
    FILE* errors;

    int complain(const std::string& text) const {
        fmt::print(errors, "{}\n", text);
        return ExitStatus::failure;
    }
};

int status(const Call& call) {
    const auto state = RunFiles::read(call.machine);
    fmt::print(call.output, "Backup session status:\n{}\n",
               state ? state->statusText(RunFiles::isStopRequested(call.machine))
                     : RunState::idleStatusText());
    return ExitStatus::success;
}

int startBackup(const Call& call) {
    BackgroundBackup::Options options;
    for (std::size_t index = 0; index < call.arguments.size(); ++index) {
        const std::string& argument = call.arguments[index];
        if (argument == "-b" || argument == "--block")
            options.waits = true;
        else if ((argument == "-d" || argument == "--destination") && index + 1 < call.arguments.size())
            options.destinationID = call.arguments[++index];
        else if (argument != "-a" && argument != "--auto" && argument != "-r" && argument != "--rotation")
            throw UsageError(fmt::format("startbackup: {} is unknown here", argument));
    }
    switch (BackgroundBackup::start(call.machine, options, call.errors)) {
    case BackgroundBackup::Outcome::failed:
        return ExitStatus::failure;
    case BackgroundBackup::Outcome::alreadyRunning:
        fmt::print(call.output, "A backup is already running.\n");
        break;
    case BackgroundBackup::Outcome::started:
        break;
    }
    return ExitStatus::success;
}

int stopBackup(const Call& call) {
    if (RunFiles::read(call.machine))
        RunFiles::requestStop(call.machine);
    return ExitStatus::success;
}

std::vector<Snapshot> currentSnapshots(const MachinePaths& machine) {
    const HostPreferences preferences = HostPreferences::load(machine);
    const HostDestination* destination = preferences.current();
    return destination ? Snapshots::list(machine.backups(destination->uuid)) : std::vector<Snapshot>();
}

/// An empty list isn't a failure: the message goes to standard error.
int noBackups(const Call& call) {
    call.complain("No backups found for host.");
    return ExitStatus::success;
}

int listBackups(const Call& call) {
    for (const std::string& argument : call.arguments)
        if (argument != "-m") // all backups here are mounted
            throw UsageError(fmt::format("listbackups: {} is unknown here", argument));
    const auto snapshots = currentSnapshots(call.machine);
    for (const Snapshot& snapshot : snapshots)
        fmt::print(call.output, "{}\n", snapshot.path.string());
    return snapshots.empty() ? noBackups(call) : ExitStatus::success;
}

int latestBackup(const Call& call) {
    const auto snapshots = currentSnapshots(call.machine);
    if (snapshots.empty())
        return noBackups(call);
    fmt::print(call.output, "{}\n", snapshots.back().path.string());
    return ExitStatus::success;
}

int machineDirectory(const Call& call) {
    const HostPreferences preferences = HostPreferences::load(call.machine);
    const HostDestination* destination = preferences.current();
    if (!destination ||
        !std::filesystem::exists(call.machine.backups(destination->uuid) / Snapshots::manifestName))
        return call.complain("No machine directory found for host.");
    fmt::print(call.output, "{}\n", call.machine.mountPoint(destination->name).string());
    return ExitStatus::success;
}

int destinationInfo(const Call& call) {
    const bool wantsPropertyList = std::ranges::find(call.arguments, "-X") != call.arguments.end();
    const HostPreferences preferences = HostPreferences::load(call.machine);
    if (preferences.destinations.empty() && !wantsPropertyList)
        return call.complain("tmutil: No destinations configured.");
    const PlistDocument document = PlistDocument::dictionary();
    const PlistNode list = document.root().setArray("Destinations");
    for (const HostDestination& destination : preferences.destinations) {
        const bool isCurrent = &destination == preferences.current();
        const std::string mountPoint = call.machine.mountPoint(destination.name);
        const bool isMounted = std::filesystem::is_directory(mountPoint);
        if (wantsPropertyList) {
            const PlistNode node = list.appendDictionary();
            node.set("ID", destination.id);
            node.set("Kind", "Local");
            node.set("LastDestination", std::int64_t{isCurrent});
            if (isMounted)
                node.set("MountPoint", mountPoint);
            node.set("Name", destination.name);
            continue;
        }
        fmt::print(call.output, "{}\nName          : {}\nKind          : Local\n",
                   isCurrent ? "> ==================================================" : std::string(52, '='),
                   destination.name);
        if (isMounted)
            fmt::print(call.output, "Mount Point   : {}\n", mountPoint);
        fmt::print(call.output, "ID            : {}\n", destination.id);
    }
    if (wantsPropertyList)
        fmt::print(call.output, "{}", document.xml());
    return ExitStatus::success;
}

int compare(const Call& call) {
    compareCommand(call.machine, CompareArguments::parse(call.arguments), call.output, call.errors);
    return ExitStatus::success;
}

int isExcluded(const Call& call) {
    return isExcludedCommand(call.machine, call.arguments, call.output);
}

int addExclusion(const Call& call) {
    return changeExclusionCommand(call.machine, call.arguments, ExclusionChange::add, call.errors);
}

int removeExclusion(const Call& call) {
    return changeExclusionCommand(call.machine, call.arguments, ExclusionChange::remove, call.errors);
}

int setUp(const Call& call) {
    setUpMachine(call.machine, parseSetup(call.arguments));
    fmt::print(call.output, "The machine at {} is set up.\n", call.machine.root().string());
    return ExitStatus::success;
}

int arrange(const Call& call) {
    const auto [permission, nextResult, copyLimit] = parseArrangement(call.arguments);
    if (permission == "granted")
        Permission::grant(call.machine);
    else if (permission == "revoked")
        Permission::revoke(call.machine);
    if (!nextResult && !copyLimit)
        return ExitStatus::success;
    HostPreferences::edit(call.machine,
                          [nextResult = nextResult, copyLimit = copyLimit](HostPreferences& preferences) {
                              if (nextResult)
                                  preferences.nextResult = nextResult;
                              if (copyLimit)
                                  preferences.copyLimit = *copyLimit ? copyLimit : std::nullopt;
                          });
    return ExitStatus::success;
}

struct Verb {
    std::string_view name;
    int (*run)(const Call&);
    bool readsBackups; ///< and so needs the permission for it
    std::string_view synopsis;
};

constexpr std::array verbs{
    Verb{"status", status, false, ""},
    Verb{"startbackup", startBackup, false, "[--block] [--destination ID]"},
    Verb{"stopbackup", stopBackup, false, ""},
    Verb{"listbackups", listBackups, true, "[-m]"},
    Verb{"latestbackup", latestBackup, true, ""},
    Verb{"machinedirectory", machineDirectory, true, ""},
    Verb{"destinationinfo", destinationInfo, false, "[-X]"},
    Verb{"compare", compare, true, "[-an@cdefgmstuEX] [-D DEPTH] [-I NAME] [BACKUP | OLDER NEWER]"},
    Verb{"isexcluded", isExcluded, false, "ITEM..."},
    Verb{"addexclusion", addExclusion, false, "[-p] ITEM..."},
    Verb{"removeexclusion", removeExclusion, false, "[-p] ITEM..."},
    Verb{"setup", setUp, false,
         "--source FOLDER --destination FOLDER [--name NAME] [--volume NAME] [--quota BYTES]"},
    Verb{"arrange", arrange, false, "[--permission granted|revoked] [--next-result CODE] [--copy-limit KIB]"},
};

std::string usage() {
    std::string text = "Usage:\n";
    for (const Verb& verb : verbs)
        text += fmt::format("    tmutil {} {}\n", verb.name, verb.synopsis);
    return text;
}

} // namespace

int runCommand(const MachinePaths& machine, const Arguments& arguments, FILE* output, FILE* errors) {
    const bool wantsHelp = !arguments.empty() && (arguments[0] == "help" || arguments[0] == "--help");
    const auto verb = arguments.empty() ? verbs.end() : std::ranges::find(verbs, arguments[0], &Verb::name);
    if (verb == verbs.end()) {
        if (!arguments.empty() && !wantsHelp)
            fmt::print(errors, "tmutil: there is no verb {}\n", arguments[0]);
        fmt::print(wantsHelp ? output : errors, "{}", usage());
        return wantsHelp ? ExitStatus::success : ExitStatus::usage;
    }
    if (verb->readsBackups && !Permission::isGranted(machine)) {
        fmt::print(errors,
                   "tmutil: {} requires Full Disk Access privileges.\n"
                   "To allow this operation, select Full Disk Access in the Privacy\n"
                   "tab of the Security & Privacy preference pane, and add Terminal\n"
                   "to the list of applications which are allowed Full Disk Access.\n",
                   verb->name);
        return ExitStatus::noPermission;
    }
    try {
        return verb->run({machine, Arguments(arguments.begin() + 1, arguments.end()), output, errors});
    } catch (const UsageError& failure) {
        fmt::print(errors, "tmutil: {}\n", failure.what());
        return ExitStatus::usage;
    } catch (const std::exception& failure) {
        fmt::print(errors, "tmutil: {}\n", failure.what());
        return ExitStatus::failure;
    }
}

} // namespace tallyglass
