#include "Tests/CommandLine/TallyRun.h"

#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <cstdlib>

namespace tallyglass::test {

namespace {

TallyRun runProgram(const std::string& executable, const std::vector<std::string>& arguments) {
    const auto result = ChildProcess{.executable = executable, .arguments = arguments, .onOutput = {}}.run();
    const auto* exited = std::get_if<ChildProcess::Exited>(&result.end);
    return {exited ? exited->status : -1, std::string(result.output.view()),
            std::string(result.errors.view())};
}

} // namespace

TallySession::TallySession() {
    setenv("XDG_DATA_HOME", (m_folder / "data").c_str(), 1);
    setenv("TALLY", program("tally").c_str(), 1);
    unsetenv("TALLYGLASS_ROOT");
}

TallySession::~TallySession() {
    unsetenv("XDG_DATA_HOME");
}

TallyRun TallySession::tally(const std::vector<std::string>& arguments) const {
    return runProgram(program("tally"), arguments);
}

TallyRun TallySession::shell(const std::string& script) const {
    return runProgram("/bin/sh", {"-c", script});
}

} // namespace tallyglass::test
