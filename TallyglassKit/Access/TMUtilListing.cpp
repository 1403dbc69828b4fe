// The verbs of TMUtilRunner that list backups.

#include "TallyglassKit/Access/TMUtilRunner.h"

#include <algorithm>
#include <exception>

namespace tallyglass {

namespace {

// Trims spaces and tabs only: other control characters, such as a carriage return, are part of a path.
std::string_view withoutBlanks(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    const auto first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

} // namespace

std::vector<std::string> TMUtilRunner::backupPathsThrowing(std::stop_token stop) const {
    const std::string output = run({"listbackups", "-m"}, std::move(stop)).stdoutText();
    std::vector<std::string> paths;
    for (std::string_view rest = output; !rest.empty();) {
        const auto end = std::min(rest.find('\n'), rest.size());
        if (const auto path = withoutBlanks(rest.substr(0, end)); !path.empty())
            paths.emplace_back(path);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return paths;
}

std::vector<std::string> TMUtilRunner::backupPaths(std::stop_token stop) const {
    try {
        return backupPathsThrowing(std::move(stop));
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace tallyglass
