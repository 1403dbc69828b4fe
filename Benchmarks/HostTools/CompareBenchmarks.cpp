// host-compare: the host's `tmutil compare` relative to rsync's dry run, on two backups that share most
// files.

#include "Benchmarks/Support/Row.h"
#include "HostTools/Machine/MachineSetup.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <fmt/format.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace tallyglass::bench {

namespace fs = std::filesystem;

namespace {

constexpr int folders = 2000;
constexpr int filesPerFolder = 50;
constexpr int changedEvery = 100;

/// Two trees of 100,000 files, and a machine to compare them with.
struct Trees {
    Trees() {
        std::string pattern = (fs::temp_directory_path() / "tallyglass-compare-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw FileError(errno, pattern);
        root = pattern;
        for (int folder = 0; folder < folders; ++folder)
            fill(fmt::format("{:02}/{:02}/{:02}", folder % 20, folder / 20 % 10, folder / 200), folder);
        const MachinePaths machine(SystemPaths(root / "machine"));
        Permission::grant(machine);
        fs::create_directories(machine.tool().parent_path());
        fs::create_symlink(TALLYGLASS_PROGRAMS "/tmutil", machine.tool());
        tool = machine.tool();
    }
    ~Trees() {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }
    Trees(const Trees&) = delete;
    Trees& operator=(const Trees&) = delete;

    void fill(const std::string& folder, int number) {
        fs::create_directories(root / "older" / folder);
        fs::create_directories(root / "newer" / folder);
        for (int index = 0; index < filesPerFolder; ++index) {
            const std::string name = fmt::format("{}/Letter of the {}th.txt", folder, index);
            std::ofstream(root / "older" / name) << name;
            if ((number * filesPerFolder + index) % changedEvery == 0)
                std::ofstream(root / "newer" / name) << name << " and more";
            else
                fs::create_hard_link(root / "older" / name, root / "newer" / name);
        }
        // As in a backup, the newer folder keeps the date of its source.
        fs::last_write_time(root / "newer" / folder, fs::last_write_time(root / "older" / folder));
    }

    fs::path root;
    std::string tool;
};

std::shared_ptr<Trees> trees;

double run(const std::string& executable, const std::vector<std::string>& arguments) {
    return seconds([&] {
        const auto result = ChildProcess{.executable = executable, .arguments = arguments}.run();
        if (result.end != decltype(result.end)(ChildProcess::Exited{0}))
            throw Error(executable + " failed");
        keep(result.output);
    });
}

const bool added = add({
    .name = "host-compare",
    .work = "tmutil compare of two backups, 100,000 files, 1 % changed",
    .reference = "rsync -an --delete between them",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.2,
    .aim = 0.8,
    .prepare =
        [] {
            trees = std::make_shared<Trees>();
            return std::shared_ptr<void>(nullptr, [](void*) { trees.reset(); });
        },
    .measure =
        [] {
            return run(trees->tool, {"compare", "-X", trees->root / "older", trees->root / "newer"});
        },
    .measureReference =
        [] {
            return run("/usr/bin/rsync", {"-an", "--delete", trees->root / "newer/", trees->root / "older/"});
        },
});

} // namespace

} // namespace tallyglass::bench
