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

/// The present environment with these variables in place of their old values.
std::vector<std::string> environmentWith(const std::map<std::string, std::string>& variables) {
    std::vector<std::string> result;
    for (char** entry = environ; *entry; ++entry) {
        const std::string variable(*entry);
        if (!variables.contains(variable.substr(0, variable.find('='))))
            result.push_back(variable);
    }
    for (const auto& [name, value] : variables)
        result.push_back(std::string(name).append("=").append(value));
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& words) {
    std::vector<char*> result;
    for (std::string& word : words)
        result.push_back(word.data());
    result.push_back(nullptr);
    return result;
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

    std::vector<std::string> words{path};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::map<std::string, std::string> changed = environment;
    changed["QT_QPA_PLATFORM"] = "offscreen";
    changed["QT_QUICK_BACKEND"] = "software";
    changed["DBUS_SESSION_BUS_ADDRESS"] = ""; // a desktop without a bus
    std::vector<std::string> variables = environmentWith(changed);
    const std::vector<char*> argv = pointers(words);
    const std::vector<char*> envp = pointers(variables);

    bool isReady = false;
    m_secondsToReady = seconds([&] {
        m_pid = fork();
        if (m_pid == 0) {
            dup2(ends[1], STDOUT_FILENO);
            execve(path.c_str(), argv.data(), envp.data());
            _exit(127);
        }
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
