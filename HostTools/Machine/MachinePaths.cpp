#include "HostTools/Machine/MachinePaths.h"

namespace tallyglass {

MachinePaths MachinePaths::ofInvocation(std::string_view invocation) {
    constexpr std::string_view tool = "/usr/bin/tmutil";
    if (!invocation.ends_with(tool))
        return MachinePaths(SystemPaths::standard());
    invocation.remove_suffix(tool.size());
    return MachinePaths(SystemPaths(invocation.empty() ? "/" : std::filesystem::path(invocation)));
}

bool isWithin(std::string_view path, std::string_view folder) {
    while (folder.ends_with('/'))
        folder.remove_suffix(1);
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace tallyglass
