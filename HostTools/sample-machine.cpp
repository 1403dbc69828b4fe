// Creates a machine with weeks of backups, for demonstrations and tests.

#include "HostTools/Machine/SampleMachine.h"
#include "HostTools/Machine/ToolArguments.h"

#include <fmt/core.h>
#include <unistd.h>

#include <cstdio>
#include <exception>

using namespace tallyglass;

int main(int argc, char** argv) {
    auto [options, exitCode] = parseSampleMachine(argc, argv);
    if (!options)
        return exitCode;
    const bool onTerminal = isatty(STDERR_FILENO);
    if (onTerminal)
        options->progress = [](int done, int total) { fmt::print(stderr, "\rBackup {} of {}", done, total); };
    try {
        makeSampleMachine(*options);
    } catch (const std::exception& failure) {
        fmt::print(stderr, "{}sample-machine: {}\n", onTerminal ? "\n" : "", failure.what());
        return 1;
    }
    if (onTerminal)
        fmt::print(stderr, "\n");
    fmt::print("The sample machine is ready. Enter it with TALLYGLASS_ROOT={}\n",
               std::filesystem::absolute(options->root).string());
    return 0;
}
