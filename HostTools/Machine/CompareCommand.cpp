#include "HostTools/Machine/CompareCommand.h"

#include "HostTools/Machine/BackupRun.h"
#include "HostTools/Machine/Exclusions.h"
#include "HostTools/Machine/HostPreferences.h"
#include "HostTools/Machine/Snapshots.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <memory>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

bool exists(const std::string& path) {
    std::error_code failure;
    return fs::exists(fs::symlink_status(path, failure));
}

/// An operand as given, and its real path.
struct Operand {
    std::string given;
    std::string path; ///< empty for an item that its backup doesn't contain
    std::optional<BackupLocation> location;
};

Operand findOperand(const MachinePaths& machine, const std::string& given) {
    Operand operand{.given = given, .path = given, .location = {}};
    while (operand.given.size() > 1 && operand.given.ends_with('/'))
        operand.given.pop_back();
    if (!exists(given) && given.starts_with('/') &&
        (exists(machine.under(given)) || BackupLocation::of(machine, machine.under(given))))
        operand.path = machine.under(given);
    operand.location = BackupLocation::of(machine, operand.path);
    if (exists(operand.path))
        return operand;
    if (!operand.location)
        throw FileError(ENOENT, given);
    operand.path.clear();
    return operand;
}

std::unique_ptr<ComparisonReport> makeReport(const CompareArguments& arguments, const std::string& older,
                                             const std::string& newer, FILE* output, FILE* warnings) {
    if (arguments.wantsPropertyList)
        return std::make_unique<PropertyListReport>(older, newer, output, warnings);
    return std::make_unique<TextReport>(older, newer, output, warnings);
}

/// Reports the differences between the volumes of two backups, without the volumes' own folders.
class WithinVolumes final : public ComparisonSink {
public:
    explicit WithinVolumes(ComparisonSink& sink) : m_sink(sink) {}

    void differs(const TreeDifference& difference) override {
        const bool isVolume = !difference.path.empty() && difference.path.find('/', 1) == std::string::npos;
        if (!isVolume || !difference.older || !difference.newer)
            m_sink.differs(difference);
    }
    void unreadable(const std::string& path, int errorNumber) override {
        m_sink.unreadable(path, errorNumber);
    }
    void excluded(std::string_view path) override { m_sink.excluded(path); }
    void entered(std::string_view path, const struct stat* older, const struct stat* newer) override {
        m_sink.entered(path, older, newer);
    }

private:
    ComparisonSink& m_sink;
};

void compareTwo(const MachinePaths& machine, const CompareArguments& arguments, FILE* output,
                FILE* warnings) {
    const Operand older = findOperand(machine, arguments.operands[0]);
    const Operand newer = findOperand(machine, arguments.operands[1]);
    if (older.path.empty() && newer.path.empty())
        throw FileError(ENOENT, older.given);
    std::optional<ExclusionRules> rules;
    if (older.location && !newer.location && !arguments.ignoresExclusions)
        rules.emplace(machine, HostPreferences::load(machine));
    const auto report = makeReport(arguments, older.given, newer.given, output, warnings);
    WithinVolumes withinVolumes(*report);
    const auto isWhole = [](const Operand& operand) {
        return operand.location && operand.location->volume.empty();
    };
    ComparisonSink& sink =
        isWhole(older) && isWhole(newer) ? withinVolumes : static_cast<ComparisonSink&>(*report);
    compareTrees({.older = older.path, .newer = newer.path, .exclusions = rules ? &*rules : nullptr},
                 arguments.options, sink);
    report->end();
}

std::string latestBackup(const MachinePaths& machine, const HostPreferences& preferences) {
    const HostDestination* destination = preferences.current();
    if (!destination)
        throw Error("No destinations configured.");
    const auto snapshots = Snapshots::list(machine.backups(destination->uuid));
    if (snapshots.empty())
        throw Error("No backups found for host.");
    return snapshots.back().path;
}

/// The sources below `logical`, relative to it; empty if it is in a source itself.
std::vector<std::string> sourcesBelow(const std::string& logical, const std::vector<std::string>& sources,
                                      const std::string& liveRoot) {
    std::vector<std::string> result;
    for (const std::string& source : sources) {
        const std::string logicalSource = source.substr(liveRoot.size());
        if (isWithin(logical, logicalSource))
            return {};
        if (isWithin(logicalSource, logical))
            result.push_back(logicalSource.substr(logical.size()));
    }
    return result;
}

void compareWithSource(const MachinePaths& machine, const CompareArguments& arguments, FILE* output,
                       FILE* warnings) {
    const HostPreferences preferences = HostPreferences::load(machine);
    const Operand backup =
        findOperand(machine, arguments.operands.empty() ? latestBackup(machine, preferences)
                                                        : arguments.operands.front());
    if (!backup.location)
        throw Error(fmt::format("{} is not in a backup of this machine.", backup.given));
    if (backup.path.empty())
        throw FileError(ENOENT, backup.given);

    const bool isWhole = backup.location->volume.empty();
    const std::string suffix = isWhole ? "/" + preferences.volumeName : "";
    const fs::path liveRoot = liveRootOf(machine, preferences);
    const std::string livePrefix = liveRoot == "/" ? "" : liveRoot.string();
    const std::string& logical = backup.location->logical;
    const std::string live = livePrefix + logical;
    const ExclusionRules rules(machine, preferences);
    const auto report = makeReport(arguments, backup.given + suffix, live, output, warnings);
    compareTrees({.older = backup.path + suffix,
                  .newer = live.empty()   ? "/"
                           : exists(live) ? live
                                          : "",
                  .exclusions = arguments.ignoresExclusions ? nullptr : &rules,
                  .within = sourcesBelow(logical, preferences.sources, livePrefix),
                  .level = isWhole ? 1 : 0},
                 arguments.options, *report);
    report->end();
}

std::int64_t depthOf(const std::string& text) {
    std::int64_t depth = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), depth);
    if (failure != std::errc() || end != text.data() + text.size() || depth < 0)
        throw UsageError(fmt::format("compare: {} is no depth", text));
    return depth;
}

} // namespace

CompareArguments CompareArguments::parse(const std::vector<std::string>& arguments) {
    CompareArguments result;
    bool choosesProperties = false;
    const auto choose = [&](std::string_view letters) {
        if (!choosesProperties)
            result.options.properties.letters.clear();
        choosesProperties = true;
        result.options.properties.letters.append(letters);
    };
    std::size_t index = 0;
    for (; index < arguments.size() && arguments[index].size() > 1 && arguments[index].front() == '-';
         ++index) {
        const std::string& cluster = arguments[index];
        if (cluster == "--") {
            ++index;
            break;
        }
        for (std::size_t at = 1; at < cluster.size(); ++at) {
            const char letter = cluster[at];
            if (ComparedProperties::all.find(letter) != std::string_view::npos)
                choose({&letter, 1});
            else if (letter == 'a')
                choose(ComparedProperties::all);
            else if (letter == 'n')
                choose("");
            else if (letter == 'E')
                result.ignoresExclusions = true;
            else if (letter == 'X')
                result.wantsPropertyList = true;
            else if (letter == 'D' || letter == 'I') {
                std::string value = cluster.substr(at + 1);
                if (value.empty() && ++index == arguments.size())
                    throw UsageError(fmt::format("compare: option -{} needs a value", letter));
                if (value.empty())
                    value = arguments[index];
                if (letter == 'D')
                    result.options.depth = depthOf(value);
                else
                    result.options.ignoredNames.push_back(value);
                break;
            } else
                throw UsageError(fmt::format("compare: there is no option -{}", letter));
        }
    }
    result.operands.assign(arguments.begin() + static_cast<std::ptrdiff_t>(index), arguments.end());
    if (result.operands.size() > 2)
        throw UsageError("compare: at most two paths");
    return result;
}

std::optional<BackupLocation> BackupLocation::of(const MachinePaths& machine, const std::string& path) {
    // <backups>/<destination>/<stamp>.backup/<stamp>.backup/<volume>/..., or by the mount point's name
    std::string base = machine.backups();
    if (!isWithin(path, base))
        base = machine.under("/Volumes");
    if (!isWithin(path, base) || path == base)
        return std::nullopt;
    std::vector<std::size_t> ends; // of the first four components after the base
    for (std::size_t end = base.size(); ends.size() < 4 && end != std::string::npos;) {
        end = path.find('/', end + 1);
        ends.push_back(std::min(end, path.size()));
    }
    if (ends.size() < 3)
        return std::nullopt;
    BackupLocation location{.root = path.substr(0, ends[2]), .volume = "", .logical = ""};
    std::error_code missing;
    const fs::path root(location.root);
    if (root.extension() != ".backup" || root.parent_path().filename() != root.filename() ||
        !fs::is_directory(root, missing))
        return std::nullopt;
    if (ends.size() < 4 || ends[3] <= ends[2] + 1)
        return location;
    location.volume = path.substr(ends[2] + 1, ends[3] - ends[2] - 1);
    location.logical = path.substr(ends[3]);
    while (location.logical.ends_with('/'))
        location.logical.pop_back();
    return location;
}

void compareCommand(const MachinePaths& machine, const CompareArguments& arguments, FILE* output,
                    FILE* warnings) {
    if (arguments.operands.size() == 2)
        compareTwo(machine, arguments, output, warnings);
    else
        compareWithSource(machine, arguments, output, warnings);
}

} // namespace tallyglass
