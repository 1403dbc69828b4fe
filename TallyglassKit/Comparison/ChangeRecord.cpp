#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace tallyglass {

namespace {

constexpr auto npos = std::string_view::npos;

/// The length of `path` without its trailing slashes.
std::size_t lengthWithoutTrailingSlashes(std::string_view path) {
    const auto last = path.find_last_not_of('/');
    return last == npos ? 0 : last + 1;
}

/// Calls `visit` with each non-empty piece between commas until it returns true. Returns whether it did.
template <typename Visit>
bool anyDifference(std::string_view differences, Visit visit) {
    while (!differences.empty()) {
        const auto comma = std::min(differences.find(','), differences.size());
        if (comma > 0 && visit(differences.substr(0, comma)))
            return true;
        differences.remove_prefix(std::min(comma + 1, differences.size()));
    }
    return false;
}

} // namespace

ChangeRecord::ChangeRecord(std::optional<std::int64_t> newID, SharedText newComparisonID, std::string newPath,
                           ChangeKind newKind, bool newIsDirectory, std::optional<std::int64_t> newSize,
                           std::optional<std::int64_t> newSizeDelta,
                           const std::optional<std::vector<std::string>>& newDifferences)
    : id(newID), comparisonID(std::move(newComparisonID)), path(std::move(newPath)), size(newSize),
      sizeDelta(newSizeDelta), kind(newKind), isDirectory(newIsDirectory) {
    if (newDifferences)
        differences = joinedDifferences(*newDifferences);
}

std::string_view ChangeRecord::parentPath() const {
    return tallyglass::parentPath(path);
}

std::string_view ChangeRecord::fileName() const {
    const std::string_view whole = path;
    const auto trimmed = whole.substr(0, lengthWithoutTrailingSlashes(whole));
    if (trimmed.empty())
        return whole.substr(0, std::min<std::size_t>(whole.size(), 1));
    const auto slash = trimmed.rfind('/');
    return slash == npos ? trimmed : trimmed.substr(slash + 1);
}

std::vector<std::string> ChangeRecord::differenceList() const {
    std::vector<std::string> list;
    if (differences)
        anyDifference(*differences, [&](std::string_view name) {
            list.emplace_back(name);
            return false;
        });
    return list;
}

bool ChangeRecord::isContentChange() const {
    if (kind != ChangeKind::modified)
        return true;
    return differences && anyDifference(*differences, [](std::string_view name) {
               return name == "size" || name == "data" || name == "contents";
           });
}

std::string_view parentPath(std::string_view path) {
    const auto trimmed = path.substr(0, lengthWithoutTrailingSlashes(path));
    if (trimmed.empty())
        return path.substr(0, std::min<std::size_t>(path.size(), 1)); // "/" is its own parent
    const auto slash = trimmed.rfind('/');
    if (slash == npos)
        return {};
    const auto length = lengthWithoutTrailingSlashes(trimmed.substr(0, slash));
    return path.substr(0, std::max<std::size_t>(length, 1));
}

std::string joinedDifferences(const std::vector<std::string>& differences) {
    return fmt::format("{}", fmt::join(differences, ","));
}

} // namespace tallyglass
