#include "TallyglassKit/Access/BackupName.h"

#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Text/NumberConversion.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <ranges>
#include <vector>

namespace tallyglass {

namespace {

constexpr std::size_t namesShown = 5;
constexpr std::string_view latest = "latest";
constexpr std::string_view oldest = "oldest";

std::string_view withoutSuffix(std::string_view component) {
    return component.ends_with(BackupPath::suffix)
               ? component.substr(0, component.size() - BackupPath::suffix.size())
               : component;
}

std::string_view withoutSlash(std::string_view path) {
    return path.size() > 1 && path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
}

std::string list(std::span<const std::string> names) {
    const auto shown = names.first(std::min(names.size(), namesShown));
    auto text = fmt::format("{}", fmt::join(shown, ", "));
    if (names.size() > shown.size())
        text += fmt::format(" and {} more", names.size() - shown.size());
    return text;
}

/// The failure for a name that no backup has, with those that would stand around it.
Error unknown(std::string_view name, std::span<const std::string> roots) {
    if (roots.empty())
        return Error(BackupListing::message());
    std::vector<std::string> names;
    std::ranges::transform(roots, std::back_inserter(names), BackupName::of);
    std::ranges::sort(names);
    const auto place = static_cast<std::size_t>(std::ranges::lower_bound(names, name) - names.begin());
    const char* const words = place == names.size() ? "last" : place == 0 ? "first" : "nearest";
    const auto count = std::min(names.size(), namesShown);
    const auto first = std::min(place - std::min(place, count / 2), names.size() - count);
    return Error(fmt::format("There is no backup {}; the {} {} {}.", name, words, count == 1 ? "is" : "are",
                             list(std::span(names).subspan(first, count))));
}

/// How many backups before the latest one the name asks for, if it asks in this way.
std::optional<std::size_t> stepsBack(std::string_view name, std::size_t count) {
    if (name == oldest)
        return std::max<std::size_t>(count, 1) - 1;
    if (name == latest)
        return 0;
    if (!name.starts_with(latest) || !name.substr(latest.size()).starts_with('~'))
        return std::nullopt;
    const auto steps = integerOfText(name.substr(latest.size() + 1));
    return steps && *steps >= 0 ? std::optional(static_cast<std::size_t>(*steps)) : std::nullopt;
}

} // namespace

std::string BackupName::of(std::string_view path) {
    std::string_view rest = withoutSlash(path);
    while (true) {                              // from the last component on
        const auto begin = rest.rfind('/') + 1; // npos + 1 is 0
        const auto stamp = withoutSuffix(rest.substr(begin));
        if (BackupPath::dateOfStamp(stamp))
            return std::string(stamp).append(withoutSlash(path).substr(rest.size()));
        if (begin <= 1)
            return std::string(path);
        rest = rest.substr(0, begin - 1);
    }
}

std::size_t BackupName::find(std::string_view name, std::span<const std::string> roots) {
    if (const auto steps = stepsBack(name, roots.size())) {
        if (*steps < roots.size())
            return roots.size() - 1 - *steps;
        throw roots.empty() ? unknown(name, roots)
                            : Error(fmt::format("There is no backup {}; there are {}.", name, roots.size()));
    }
    const auto path = withoutSlash(name);
    const auto stamp = withoutSuffix(name);
    std::vector<std::size_t> matches;
    for (std::size_t index = 0; index < roots.size(); ++index) {
        if (roots[index] == path)
            return index;
        if (!stamp.empty() && of(roots[index]).starts_with(stamp))
            matches.push_back(index);
    }
    if (matches.size() == 1)
        return matches.front();
    if (matches.empty())
        throw unknown(name, roots);
    std::vector<std::string> names;
    for (const std::size_t match : matches)
        names.push_back(of(roots[match]));
    throw Error(fmt::format("{} could be {}.", name, list(names)));
}

} // namespace tallyglass
