// exclusion-status: the status of many items, relative to the child and the system calls that it needs.

#include "Benchmarks/Support/Row.h"
#include "HostTools/Machine/MachinePaths.h"
#include "TallyglassKit/Insight/ExclusionManager.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tallyglass::bench {

namespace fs = std::filesystem;

namespace {

constexpr int itemCount = 500;

/// Excluded items, and a machine to ask about them.
struct Items {
    Items() {
        // Not in the folder for temporary files, which is excluded as a whole.
        std::string pattern = (fs::current_path() / "tallyglass-exclusions-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw FileError(errno, pattern);
        folder = pattern;
        const MachinePaths machine(SystemPaths(folder / "machine"));
        fs::create_directories(machine.tool().parent_path());
        fs::create_symlink(TALLYGLASS_PROGRAMS "/tmutil", machine.tool());
        tool = machine.tool();
        for (int index = 0; index < itemCount; ++index) {
            paths.push_back(folder / ("item " + std::to_string(index)));
            std::ofstream(paths.back()) << index;
            setExtendedAttribute(paths.back(), ExclusionManager::excludeAttribute, "com.apple.backupd");
        }
    }
    ~Items() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Items(const Items&) = delete;
    Items& operator=(const Items&) = delete;

    fs::path folder;
    std::string tool;
    std::vector<std::string> paths;
};

std::shared_ptr<Items> items;

const bool status = add({
    .name = "exclusion-status",
    .work = "the exclusion status of 500 items",
    .reference = "tmutil isexcluded of them, and 500 lgetxattr",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.2,
    .aim = 1.05,
    .runs = 21,
    .prepare =
        [] {
            items = std::make_shared<Items>();
            return std::shared_ptr<void>(nullptr, [](void*) { items.reset(); });
        },
    .measure =
        [] {
            const ExclusionManager manager{TMUtilRunner(items->tool)};
            const std::vector<std::string> skipPaths = {"/private/var/vm", "/Users/Shared/Caches"};
            return seconds([&] {
                const auto statuses = manager.status(items->paths, skipPaths);
                if (statuses.back().reason != ExclusionReason::ownMarker)
                    throw Error("the items aren't excluded");
            });
        },
    .measureReference =
        [] {
            std::vector<std::string> arguments{"isexcluded"};
            arguments.insert(arguments.end(), items->paths.begin(), items->paths.end());
            const std::string name = "user." + std::string(ExclusionManager::excludeAttribute);
            return seconds([&] {
                keep(ChildProcess{.executable = items->tool, .arguments = arguments}.run().output);
                for (const auto& path : items->paths)
                    if (lgetxattr(path.c_str(), name.c_str(), nullptr, 0) < 0)
                        throw FileError(errno, path);
            });
        },
});

} // namespace

} // namespace tallyglass::bench
