#include "Tests/Support/SampleMachine.h"

#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <sstream>
#include <stdexcept>

namespace tallyglass::test {

namespace {

std::string run(const std::string& executable, const std::vector<std::string>& arguments) {
    const auto result = ChildProcess{.executable = executable, .arguments = arguments}.run();
    if (result.end != decltype(result.end)(ChildProcess::Exited{0}))
        throw std::runtime_error(executable + ": " + std::string(result.errors.view()));
    return std::string(result.output.view());
}

} // namespace

const SampleMachine& SampleMachine::shared() {
    static const SampleMachine machine(
        {"--backups", std::to_string(backupCount), "--files", "200", "--seed", "7"});
    return machine;
}

SampleMachine::SampleMachine(const std::vector<std::string>& options) : m_root(m_folder / "root") {
    std::vector<std::string> arguments{m_root, "--now", now};
    arguments.insert(arguments.end(), options.begin(), options.end());
    run(program("sample-machine"), arguments);
    std::istringstream lines(run(tool(), {"listbackups", "-m"}));
    for (std::string line; std::getline(lines, line);)
        m_backups.push_back(line);
}

} // namespace tallyglass::test
