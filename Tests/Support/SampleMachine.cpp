#include "Tests/Support/SampleMachine.h"

#include "TallyglassKit/Platform/ChildProcess.h"

#include <stdexcept>

namespace tallyglass::test {

const SampleMachine& SampleMachine::shared() {
    static const SampleMachine machine;
    return machine;
}

SampleMachine::SampleMachine() {
    const auto result = ChildProcess{.executable = program("sample-machine"),
                                     .arguments = {root().string(), "--backups", std::to_string(backupCount),
                                                   "--files", "200", "--seed", "7", "--now", "2026-11-22T12:00:00Z"},
                                     .onOutput = {}}
                            .run();
    if (result.end != decltype(result.end)(ChildProcess::Exited{0}))
        throw std::runtime_error("no sample machine: " + std::string(result.errors.view()));
}

} // namespace tallyglass::test
