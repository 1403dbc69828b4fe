#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CommonArguments.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedComparison.h"
#include "CommandLine/Commands/TreemapItems.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Insight/ChangeExplanation.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Insight/StorageTreeLoading.h"
#include "TallyglassKit/Insight/Treemap.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string name; ///< of the comparison, or of its older backup
    std::string to;   ///< the newer backup
    std::string path = std::string(StorageTree::rootPath);
    std::int64_t limit = 100;
};

struct NamedTree {
    Comparison comparison;
    StorageTree tree;
};

NamedTree load(const Context& context, const Arguments& arguments) {
    auto store = context.openStore();
    NamedTree result;
    result.comparison = finishedComparisonNamed(context, store, arguments.name, arguments.to);
    result.tree = loadStorageTree(store, result.comparison, std::nullopt, context.stop);
    return result;
}

/// The path as a tree has it, from one as a person types it.
std::string treePath(std::string path) {
    while (path.ends_with('/'))
        path.pop_back();
    return path.starts_with('/') ? path : "/" + path;
}

void map(const Context& context, const Arguments& arguments) {
    const auto [comparison, tree] = load(context, arguments);
    const auto path = treePath(arguments.path);
    const bool isRoot = path == StorageTree::rootPath; // which has no node without changes
    const auto folder = isRoot ? tree.root() : tree.node(path);
    if (!folder)
        throw Error(fmt::format("Nothing changed in {} from {}.", path,
                                describeOperands(comparison.fromPath, comparison.toPath)));
    auto children = tree.children(path);
    const auto count = children.size();
    children.resize(std::min(count, static_cast<std::size_t>(arguments.limit)));
    if (context.json)
        return printMapJSON(context.out, comparison, *folder, children, tree.unsizedChildCount(path),
                            tree.breadcrumb(path));

    context.out << describeOperands(comparison.fromPath, comparison.toPath) << "\n"
                << path << ": " << describe(*folder) << "\n";
    for (const auto& child : children)
        context.out << fmt::format("{}  {}{}: {}\n", alignedRight(Fmt::size(child.magnitude), 10), child.name,
                                   child.isFile ? "" : "/", describe(child));
    if (children.size() < count)
        context.out << fmt::format("and {} more\n",
                                   formatGrouped(static_cast<std::int64_t>(count - children.size())));
}

void explain(const Context& context, const Arguments& arguments) {
    const auto [comparison, tree] = load(context, arguments);
    const auto explanation = ChangeExplanation::explain(tree);
    if (context.json)
        return printJSON(context.out, comparison, explanation);
    context.out << describeOperands(comparison.fromPath, comparison.toPath) << "\n"
                << explanation.sentence << "\n";
    for (const auto& place : explanation.places)
        context.out << fmt::format("{}  {:>3.0f} %  {}\n", alignedRight(Fmt::size(place.magnitude), 10),
                                   place.share * 100, place.path);
}

Command treemapCommand() {
    const auto size = std::make_shared<std::pair<double, double>>(1000, 1000);
    return {"treemap",
            "Lays out items, an array of {\"id\", \"label\", \"value\"} on standard input, as a treemap",
            {{"--width", "The width of the rectangle to fill (1000)", &size->first, "W"},
             {"--height", "The height of the rectangle to fill (1000)", &size->second, "H"}},
            [size](const Context& context) {
                const auto items = parseTreemapItems(readStandardInput(context.stop));
                const auto tiles = Treemap::layout(items, {0, 0, size->first, size->second});
                if (context.json)
                    return printJSON(context.out, tiles);
                for (const auto& [id, label, value, rect] : tiles)
                    context.out << fmt::format("{:>10.2f} {:>10.2f} {:>10.2f} {:>10.2f}  {}\n", rect.x,
                                               rect.y, rect.width, rect.height, label);
            }};
}

Command command(std::string name, std::string description, void (*action)(const Context&, const Arguments&),
                bool isOfFolder) {
    const auto values = std::make_shared<Arguments>();
    std::vector<Argument> arguments{
        {.name = "COMPARISON",
         .description = "Its ID or its older backup; without TO, or at all, as in `tally compare`",
         .value = &values->name,
         .isOptional = true},
        newerBackupArgument(values->to),
    };
    if (isOfFolder) {
        arguments.push_back({"--path", "The folder whose items to show (/)", &values->path, "FOLDER"});
        arguments.push_back({"--limit", "Show at most this many of them (100)", &values->limit, "N"});
    }
    return {std::move(name), std::move(description), std::move(arguments),
            [values, action](const Context& context) { action(context, *values); }};
}

} // namespace

std::vector<Command> mapCommands() {
    return {
        command("map", "The items of a folder in a finished comparison, most changed bytes first", map, true),
        command("explain", "In a sentence, where most of the change of a finished comparison is", explain,
                false),
        treemapCommand(),
    };
}

} // namespace tallyglass::commandline
