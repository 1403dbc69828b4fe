#include "CommandLine/Commands/NamedBackups.h"

#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupName.h"

namespace tallyglass::commandline {

std::vector<std::string> existingBackups(const Context& context) {
    auto roots = context.runner().backupPathsThrowing(context.stop);
    if (roots.empty())
        throw Error(BackupListing::message());
    return roots;
}

std::string backupNamed(const Context& context, const std::string& name) {
    if (name.find('/') != std::string::npos)
        return name;
    const auto roots = existingBackups(context);
    return roots[BackupName::find(name, roots)];
}

BackupPair backupPairNamed(const Context& context, const std::string& from, const std::string& to) {
    if (!to.empty())
        return {backupNamed(context, from), backupNamed(context, to)};
    const auto roots = existingBackups(context);
    if (from.empty() && roots.size() < 2)
        throw Error("There is nothing to compare until there are two backups.");
    const auto newer = BackupName::find(from.empty() ? "latest" : from, roots);
    if (newer == 0)
        throw Error("There is no backup before " + BackupName::of(roots[newer]) + ".");
    return {roots[newer - 1], roots[newer]};
}

} // namespace tallyglass::commandline
