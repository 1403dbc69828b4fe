#include "HostTools/Machine/ExclusionCommands.h"

#include "HostTools/Machine/Commands.h"
#include "HostTools/Machine/CompareCommand.h"
#include "HostTools/Machine/Exclusions.h"
#include "HostTools/Machine/HostPreferences.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

std::string settledPath(const std::string& path) {
    std::string result = fs::absolute(path).lexically_normal();
    if (result.size() > 1 && result.ends_with('/'))
        result.pop_back();
    return result;
}

bool exists(const std::string& path) {
    std::error_code failure;
    return fs::exists(fs::symlink_status(path, failure));
}

/// macOS's error code for an errno.
int platformError(int errorNumber) {
    switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
        return -43; // no such file
    case EACCES:
    case EPERM:
        return -5000; // no access
    case ENOTSUP:
        return -50; // the item can't have a marker
    default:
        return -36; // I/O error
    }
}

} // namespace

int isExcludedCommand(const MachinePaths& machine, const std::vector<std::string>& paths, FILE* output) {
    if (paths.empty())
        throw UsageError("isexcluded: name an item");
    const ExclusionRules rules(machine, HostPreferences::load(machine));
    for (const std::string& path : paths) {
        const std::string absolute = fs::path(path).is_absolute() ? path : settledPath(path);
        const std::string settled = settledPath(path);
        const std::string_view word = !exists(settled)          ? "Unknown"
                                      : rules.excludes(settled) ? "Excluded"
                                                                : "Included";
        fmt::print(output, "[{}]    {}\n", word, absolute);
    }
    return ExitStatus::success;
}

int changeExclusionCommand(const MachinePaths& machine, const std::vector<std::string>& arguments,
                           ExclusionChange change, FILE* errors) {
    const bool isFixed = !arguments.empty() && arguments.front() == "-p";
    const std::vector<std::string> paths(arguments.begin() + isFixed, arguments.end());
    if (paths.empty())
        throw UsageError(fmt::format("{}: name an item",
                                     change == ExclusionChange::add ? "addexclusion" : "removeexclusion"));
    int status = ExitStatus::success;
    for (const std::string& path : paths) {
        const std::string settled = settledPath(path);
        if (isFixed) {
            HostPreferences::edit(machine, [&](HostPreferences& preferences) {
                std::erase(preferences.skipPaths, settled);
                if (change == ExclusionChange::add)
                    preferences.skipPaths.push_back(settled);
            });
            continue;
        }
        try {
            change == ExclusionChange::add ? ExclusionMarker::put(settled) : ExclusionMarker::remove(settled);
        } catch (const FileError& failure) {
            fmt::print(errors, "{}: Error ({}) while attempting to change exclusion setting.\n", path,
                       platformError(failure.code()));
            status = ExitStatus::failure;
        }
    }
    return status;
}

} // namespace tallyglass
