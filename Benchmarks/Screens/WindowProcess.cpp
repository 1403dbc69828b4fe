#include "Benchmarks/Screens/WindowProcess.h"

#include "Benchmarks/Support/Row.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tallyglass::bench {

namespace {

[[noreturn]] void becomeProgram(const std::string& path, const std::vector<std::string>& arguments,
                                const std::map<std::string, std::string>& environment, int output) {
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_QUICK_BACKEND", "software", 1);
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    std::vector<char*> words{const_cast<char*>(path.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    dup2(output, STDOUT_FILENO);
    execv(path.c_str(), words.data());
    _exit(127);
}

std::string procFile(pid_t pid, const char* name) {
    std::ifstream stream("/proc/" + std::to_string(pid) + "/" + name);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace

WindowProcess::WindowProcess(const std::string& program, const std::vector<std::string>& arguments,
                             const std::map<std::string, std::string>& environment) {
    const std::string path = TALLYGLASS_PROGRAMS "/" + program;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe could be made");

    bool isReady = false;
    m_secondsToReady = seconds([&] {
        m_pid = fork();
        if (m_pid == 0)
            becomeProgram(path, arguments, environment, ends[1]);
        close(ends[1]);
        std::array<char, 64> buffer{};
        isReady = m_pid > 0 && read(ends[0], buffer.data(), buffer.size()) > 0;
    });
    close(ends[0]);
    if (isReady)
        return;
    if (m_pid > 0)
        waitpid(m_pid, nullptr, 0);
    throw std::runtime_error(program + " ended before it was ready");
}

WindowProcess::~WindowProcess() {
    kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
}

double WindowProcess::megabytes() const {
    const std::string memory = procFile(m_pid, "smaps_rollup");
    const auto position = memory.find("\nPss:");
    if (position == std::string::npos)
        throw std::runtime_error("the program has gone");
    return std::stod(memory.substr(position + 5)) * 1024 / 1e6;
}

double WindowProcess::processorSeconds() const {
    const std::string stat = procFile(m_pid, "stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 1)); // the name before may hold spaces
    constexpr int fieldsBeforeTimes = 11;
    std::string skipped;
    for (int i = 0; i < fieldsBeforeTimes; ++i)
        fields >> skipped;
    double ticks = 0;
    for (int i = 0; i < 4; ++i) { // user and system time, then the same of children
        double time = 0;
        fields >> time;
        ticks += time;
    }
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace tallyglass::bench
