// The child for the tests of child processes. Its arguments are steps, executed from left to right; it exits
// with 0 after the last. A step that waits for a pipe continues when the pipe's other end has been opened and
// closed, and gives up after a minute, so that a failed test leaves no process behind.

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr unsigned longestWait = 60; // seconds

void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0)
            std::_Exit(90); // the reader has gone
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// Writes `size` bytes: blocks of 64 KiB, in each of which byte i is i modulo 251.
void flood(int descriptor, std::size_t size) {
    std::string block(std::size_t{64} << 10, '\0');
    for (std::size_t index = 0; index < block.size(); ++index)
        block[index] = static_cast<char>(index % 251);
    for (; size > 0; size -= std::min(size, block.size()))
        writeAll(descriptor, std::string_view(block).substr(0, size));
}

void waitFor(const std::string& pipe) {
    alarm(longestWait);
    const int descriptor = open(pipe.c_str(), O_RDONLY);
    char ignored = 0;
    while (read(descriptor, &ignored, 1) > 0) {
    }
    close(descriptor);
    alarm(0);
}

void listDescriptors() {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const auto target = std::filesystem::read_symlink(entry).string();
        if (target.find("/proc/") == std::string::npos) // not the one of this listing
            std::cout << entry.path().filename().string() << " " << target << "\n";
    }
}

/// Lists the signals that were blocked or ignored from the start.
void listSignals() {
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0)
            continue; // one of the C library's own
        if (sigismember(&blocked, signal) == 1)
            std::cout << signal << " is blocked\n";
        if (action.sa_handler == SIG_IGN)
            std::cout << signal << " is ignored\n";
    }
}

using Step = std::function<void(const std::string&)>;

const std::map<std::string_view, Step> steps = {
    {"--out", [](const std::string& text) { writeAll(STDOUT_FILENO, text); }},
    {"--err", [](const std::string& text) { writeAll(STDERR_FILENO, text); }},
    {"--flood-out", [](const std::string& size) { flood(STDOUT_FILENO, std::stoull(size)); }},
    {"--flood-err", [](const std::string& size) { flood(STDERR_FILENO, std::stoull(size)); }},
    {"--wait-for", waitFor},
    {"--exit", [](const std::string& status) { std::_Exit(std::stoi(status)); }},
    {"--die",
     [](const std::string& signal) {
         const rlimit noCore{};
         setrlimit(RLIMIT_CORE, &noCore);
         std::raise(std::stoi(signal));
     }},
    {"--environment", [](const std::string& name) { writeAll(STDOUT_FILENO, std::getenv(name.c_str())); }},
    {"--grandchild", // leaves a process that holds the streams, waits for the pipe and then says "late"
     [](const std::string& pipe) {
         if (fork() == 0) {
             waitFor(pipe);
             writeAll(STDOUT_FILENO, "late");
             std::_Exit(0);
         }
     }},
};

const std::map<std::string_view, std::function<void()>> plainSteps = {
    {"--close-streams",
     [] {
         close(STDOUT_FILENO);
         close(STDERR_FILENO);
     }},
    {"--ignore-term", [] { std::signal(SIGTERM, SIG_IGN); }},
    {"--exit-at-term", [] { std::signal(SIGTERM, [](int) { std::_Exit(0); }); }},
    {"--flood-at-term", // writes more than a pipe holds before it ends
     [] {
         std::signal(SIGTERM, [](int) {
             flood(STDOUT_FILENO, std::size_t{4} << 20);
             std::_Exit(0);
         });
     }},
    {"--pause",
     [] {
         alarm(longestWait);
         while (true)
             pause();
     }},
    {"--flood-for-ever",
     [] {
         alarm(longestWait);
         while (true)
             flood(STDOUT_FILENO, std::size_t{1} << 20);
     }},
    {"--garbage", [] { writeAll(STDOUT_FILENO, std::string_view("a\0\xFF\xC3(\xE2\x82z", 8)); }},
    {"--list-descriptors", listDescriptors},
    {"--list-signals", listSignals},
    {"--print-working-directory", [] { std::cout << std::filesystem::current_path().string(); }},
};

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--echo") { // the arguments that follow, each with a null character behind it
            while (++argument != arguments.end())
                writeAll(STDOUT_FILENO, *argument + '\0');
            return 0;
        }
        if (const auto step = plainSteps.find(*argument); step != plainSteps.end())
            step->second();
        else if (const auto stepWithValue = steps.find(*argument);
                 stepWithValue != steps.end() && argument + 1 != arguments.end())
            stepWithValue->second(*++argument);
        else
            std::_Exit(91);
        std::cout.flush();
    }
    return 0;
}
