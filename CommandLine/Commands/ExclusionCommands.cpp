#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Insight/ExclusionManager.h"

#include <fmt/core.h>

#include <filesystem>
#include <memory>

namespace tallyglass::commandline {

namespace {

/// The absolute path, as tmutil prints it.
std::string absolutePath(const std::string& path) {
    const auto absolute = std::filesystem::absolute(path).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

using Change = void (ExclusionManager::*)(const std::string&, const std::stop_token&) const;

/// Makes the change, if there is one, to all items, and prints what they are then.
void perform(const Context& context, const std::vector<std::string>& items, Change change) {
    std::vector<std::string> paths;
    for (const auto& item : items)
        paths.push_back(absolutePath(item));
    const ExclusionManager manager(context.runner());
    if (change)
        for (const auto& path : paths)
            (manager.*change)(path, context.stop);
    const auto settings = TimeMachinePreferences().read(context.paths);
    const auto statuses =
        manager.status(paths, settings ? settings->skipPaths : std::vector<std::string>(), context.stop);
    if (context.json)
        return printJSON(context.out, statuses);
    for (const auto& status : statuses)
        context.out << fmt::format("{:<8}  {}\n          {}\n", rawValue(status.state), status.path,
                                   status.explanation());
}

Command command(std::string name, std::string description, Change change) {
    const auto items = std::make_shared<std::vector<std::string>>();
    return {std::move(name),
            std::move(description),
            {{"PATH", "The items, such as /Users/anna/Movies", items.get(), "PATH..."}},
            [items, change](const Context& context) { perform(context, *items, change); }};
}

} // namespace

std::vector<Command> exclusionCommands() {
    return {
        command("exclusions", "Whether items are left out of backups, and why", nullptr),
        command("exclude", "Leaves items out of backups from the next one on", &ExclusionManager::exclude),
        command("include", "Takes items into backups again that are marked to be left out",
                &ExclusionManager::include),
    };
}

} // namespace tallyglass::commandline
