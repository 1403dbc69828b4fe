#include "Tests/Support/ProcessResources.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace tallyglass::test {

namespace {

std::size_t entries(const char* folder) {
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// The parent of a process, 0 if it has gone meanwhile.
pid_t parent(const std::filesystem::path& process) {
    std::ifstream file(process / "stat");
    std::string line;
    std::getline(file, line);
    // The name before it, in parentheses, can hold anything.
    std::istringstream fields(line.substr(std::min(line.size(), line.rfind(')') + 1)));
    char state = 0;
    pid_t result = 0;
    fields >> state >> result;
    return fields ? result : 0;
}

} // namespace

ProcessResources ProcessResources::now() {
    ProcessResources result{.descriptors = entries("/proc/self/fd") - 1, // one lists them
                            .threads = entries("/proc/self/task")};
    for (const auto& entry : std::filesystem::directory_iterator("/proc"))
        if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string().front())) &&
            parent(entry.path()) == getpid())
            ++result.children;
    return result;
}

std::ostream& operator<<(std::ostream& stream, const ProcessResources& resources) {
    return stream << resources.descriptors << " descriptors, " << resources.children << " children, "
                  << resources.threads << " threads";
}

ResourceGuard::ResourceGuard() {
    // With the first thread, a sanitizer starts one of its own that stays.
    pid_t thread = 0;
    std::thread([&] { thread = gettid(); }).join();
    while (std::filesystem::exists("/proc/self/task/" + std::to_string(thread)))
        std::this_thread::yield(); // a thread that has been joined is listed for a moment longer
    m_before = ProcessResources::now();
}

ResourceGuard::~ResourceGuard() {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (ProcessResources::now() != m_before && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    EXPECT_EQ(ProcessResources::now(), m_before);
}

} // namespace tallyglass::test
