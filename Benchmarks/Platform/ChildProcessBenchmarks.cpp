// The cost of running a child for its output, relative to the minimum that the system needs.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/ErrorText.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace tallyglass::bench {

namespace {

constexpr std::size_t drained = std::size_t{1} << 30;
constexpr int spawned = 1000;

/// Runs the program with the C library's functions.
void spawnAndWait(std::vector<std::string> command) {
    std::vector<char*> argv;
    for (std::string& argument : command)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (const int error = posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ); error != 0)
        throw Error(command[0] + ": " + errorText(error));
    int status = 0;
    if (waitpid(pid, &status, 0) != pid || status != 0)
        throw Error(command[0] + " failed");
}

const std::string child = TALLYGLASS_PROGRAMS "/test-child";
const std::string flood = "--flood-out";

const bool drainChild = add({
    .name = "drain-child",
    .work = "run a child that writes 1 GiB and hold it",
    .reference = "the same child | cat > /dev/null",
    .unit = "s",
    .ratio = Ratio::speed,
    .must = 0.4,
    .aim = 0.8,
    .prepare = {},
    .measure =
        [] {
            return seconds([] {
                if (TMUtilRunner(child).run({flood, std::to_string(drained)}).stdout.size() != drained)
                    throw Error("bytes were lost");
            });
        },
    .measureReference =
        [] {
            return seconds([] {
                const auto pipeline = "'" + child + "' " + flood + " " + std::to_string(drained) + " | cat";
                spawnAndWait({"/bin/sh", "-c", pipeline + " > /dev/null"});
            });
        },
});

const bool spawnTrue = add({
    .name = "spawn-true",
    .work = "run /bin/true 1000 times",
    .reference = "posix_spawn and waitpid",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.5,
    .aim = 1.2,
    .prepare = {},
    .measure =
        [] {
            const TMUtilRunner runner("/bin/true");
            return seconds([&] {
                for (int run = 0; run < spawned; ++run)
                    keep(runner.runRaw({}, TMUtilRunner::defaultKillAfter, nullptr).exitCode);
            });
        },
    .measureReference =
        [] {
            return seconds([] {
                for (int run = 0; run < spawned; ++run)
                    spawnAndWait({"/bin/true"});
            });
        },
});

} // namespace

} // namespace tallyglass::bench
