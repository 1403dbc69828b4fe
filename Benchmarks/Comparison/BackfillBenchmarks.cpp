// Comparing all neighbouring backups of a sample machine, relative to the bare children; and what a single
// comparison costs meanwhile. The caches are in memory where the system has a folder for that: the references
// write nothing, and the syncs of a disk would hide all else.

#include "Benchmarks/Comparison/SampleChanges.h"
#include "Benchmarks/Support/Row.h"
#include "HostTools/Machine/SampleMachine.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace tallyglass::bench {

namespace fs = std::filesystem;

namespace {

constexpr int concurrency = 2;
constexpr std::size_t pairCount = 59;
const CompareOptions options = CompareOptions::fast();

/// A machine with 60 backups, and a cache with all comparisons of neighbours.
struct Backups {
    Backups() {
        makeSampleMachine({.root = root, .now = dateSince1970(1.8e9), .progress = {}});
        paths = TMUtilRunner(tool).backupPathsThrowing();
        backfill(ready);
    }
    [[nodiscard]] static Folder memoryFolder() {
        return fs::exists("/dev/shm") ? Folder("/dev/shm") : Folder();
    }
    void backfill(BackupStore& store) const {
        const auto finished =
            DiffEngine(TMUtilRunner(tool), store).backfillAdjacentPairs(concurrency, options);
        if (finished.size() != pairCount)
            throw Error(fmt::format("only {} pairs are ready", finished.size()));
    }
    [[nodiscard]] fs::path emptyCache() const {
        const auto file = caches.path() / "empty.sqlite";
        TallyglassDatabase::reset(file);
        return file;
    }

    Folder folder;
    Folder caches = memoryFolder();
    fs::path root = folder.path() / "machine";
    std::string tool = root / "usr/bin/tmutil";
    std::vector<std::string> paths;
    BackupStore ready{caches.path() / "ready.sqlite"};
};

std::shared_ptr<Backups> backups; // of all rows, until the program ends

std::shared_ptr<void> prepare() {
    if (!backups)
        backups = std::make_shared<Backups>();
    return backups;
}

/// tmutil compare of the pair with its output to the null device.
void compareBarely(std::size_t pair) {
    std::vector<std::string> arguments{backups->tool, "compare"};
    std::ranges::copy(options.arguments(), std::back_inserter(arguments));
    arguments.insert(arguments.end(), {backups->paths[pair], backups->paths[pair + 1]});
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    int status = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0 || waitpid(pid, &status, 0) != pid || status != 0)
        throw Error("tmutil failed");
}

const bool fill = add({
    .name = "backfill",
    .work = "compare 60 backups of 3,000 files, each with the one before it, two at a time",
    .reference = "the 59 bare tmutil compare, two at a time",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.6,
    .aim = 1.2,
    .prepare = prepare,
    .measure =
        [] {
            BackupStore store(backups->emptyCache());
            return seconds([&] { backups->backfill(store); });
        },
    .measureReference =
        [] {
            return seconds([] {
                std::atomic<std::size_t> next = 0;
                std::vector<std::jthread> threads;
                for (int count = 0; count < concurrency; ++count)
                    threads.emplace_back([&] {
                        for (std::size_t pair = next++; pair < pairCount; pair = next++)
                            compareBarely(pair);
                    });
            });
        },
});

const bool readyBefore = add({
    .name = "backfill-ready",
    .work = "the same when all comparisons are in the cache",
    .reference = "SELECT * FROM comparison by the sqlite3 program",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 2,
    .aim = 1.2,
    .runs = 21,
    .prepare = prepare,
    .measure = [] { return seconds([] { backups->backfill(backups->ready); }); },
    .measureReference =
        [] {
            return seconds([] {
                const auto file = backups->caches.path() / "ready.sqlite";
                const auto result = ChildProcess{.executable = "/usr/bin/sqlite3",
                                                 .arguments = {file, "SELECT * FROM comparison"}}
                                        .run();
                if (std::ranges::count(result.output.view(), '\n') != std::ptrdiff_t{pairCount})
                    throw Error("rows are missing");
            });
        },
});

/// Two backups that aren't neighbours.
void compareOnePair(const DiffEngine& engine) {
    keep(engine.compare(backups->paths.front(), backups->paths[30], options, false));
}

/// The mean of comparisons that begin one by one after further pairs have ended.
double measureMeanwhile() {
    BackupStore store(backups->emptyCache());
    const DiffEngine engine(TMUtilRunner(backups->tool), store);
    std::atomic<std::int64_t> completed = 0;
    std::jthread filling([&](const std::stop_token& stop) {
        const auto count = [&](const DiffEngine::BackfillProgress& progress) {
            completed = progress.completed;
            completed.notify_one();
        };
        keep(engine.backfillAdjacentPairs(concurrency, options, count, stop));
    });
    constexpr int comparisons = 5;
    double time = 0;
    for (int number = 0; number < comparisons; ++number) {
        auto seen = completed.load();
        for (const auto next = seen + 5; seen < next; seen = completed)
            completed.wait(seen);
        time += seconds([&] { compareOnePair(engine); });
    }
    if (completed == std::int64_t{pairCount})
        throw Error("all pairs were ready before the last comparison");
    return time / comparisons;
}

const bool meanwhile = add({
    .name = "compare-in-backfill",
    .work = "one comparison while all neighbours are compared, two at a time",
    .reference = "the same comparison alone",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 2.5,
    .aim = 1.5,
    .prepare = prepare,
    .measure = measureMeanwhile,
    .measureReference =
        [] {
            BackupStore store(backups->emptyCache());
            const DiffEngine engine(TMUtilRunner(backups->tool), store);
            constexpr int count = 10;
            return seconds([&] {
                       for (int number = 0; number < count; ++number)
                           compareOnePair(engine);
                   }) /
                   count;
        },
});

} // namespace

} // namespace tallyglass::bench
