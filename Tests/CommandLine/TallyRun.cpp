#include "Tests/CommandLine/TallyRun.h"

#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <unistd.h>

#include <csignal>
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

pid_t TallySession::start(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), program("tally"));
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, (m_folder / "output").c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t pid = 0;
    EXPECT_EQ(posix_spawn(&pid, argv[0], &actions, &attributes, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return pid;
}

} // namespace tallyglass::test
