// What the window costs over an empty one: its start, its memory and its processor time at rest. Both run off
// screen with the software renderer, so that the figures don't hang on a display or its driver.

#include "Benchmarks/Screens/WindowProcess.h"
#include "Benchmarks/Support/Row.h"
#include "HostTools/Machine/SampleMachine.h"
#include "TallyglassKit/Platform/Clock.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace tallyglass::bench {

namespace {

const std::string reference = "an empty Qt Quick window";
constexpr auto settling = std::chrono::seconds(3); ///< from the first frame until the program is at rest
constexpr auto idle = std::chrono::seconds(60);

/// A sample machine, for as long as the rows are measured.
class Machine {
public:
    Machine() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tallyglass-bench-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        makeSampleMachine(
            {.root = m_folder / "machine", .backups = 60, .files = 200, .now = systemTime(), .progress = {}});
    }
    ~Machine() { std::filesystem::remove_all(m_folder); }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    [[nodiscard]] std::map<std::string, std::string> environment() const {
        return {{"TALLYGLASS_ROOT", m_folder / "machine"}, {"XDG_RUNTIME_DIR", m_folder}};
    }

private:
    std::filesystem::path m_folder;
};

std::shared_ptr<Machine> machine() {
    static std::weak_ptr<Machine> shared; // a row keeps it while it is measured
    auto made = shared.lock();
    if (!made)
        shared = made = std::make_shared<Machine>();
    return made;
}

WindowProcess tallyglassWindow() {
    return WindowProcess("tallyglass", {"--report-start"}, machine()->environment());
}
WindowProcess emptyWindow() {
    return WindowProcess("empty-window", {}, machine()->environment());
}

double memoryAtRest(const WindowProcess& window) {
    std::this_thread::sleep_for(settling);
    return window.megabytes();
}

double idleTime(const WindowProcess& window) {
    std::this_thread::sleep_for(settling);
    const double before = window.processorSeconds();
    std::this_thread::sleep_for(idle);
    return window.processorSeconds() - before;
}

const bool startWindow = add({
    .name = "start-window",
    .work = "start to the first whole frame",
    .reference = reference,
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 3.0,
    .aim = 2.0,
    .runs = 15,
    .prepare = machine,
    .measure = [] { return tallyglassWindow().secondsToReady(); },
    .measureReference = [] { return emptyWindow().secondsToReady(); },
});

const bool memoryWindow = add({
    .name = "memory-window",
    .work = "memory at rest on the dashboard",
    .reference = reference,
    .unit = "MB",
    .ratio = Ratio::difference,
    .must = 45,
    .aim = 25,
    .runs = 3,
    .prepare = machine,
    .measure = [] { return memoryAtRest(tallyglassWindow()); },
    .measureReference = [] { return memoryAtRest(emptyWindow()); },
});

const bool idleWindow = add({
    .name = "idle-window",
    .work = "processor time over 60 s idle, children included",
    .reference = reference,
    .unit = "s",
    .ratio = Ratio::difference,
    .must = 0.3,
    .aim = 0.1,
    .runs = 1,
    .prepare = machine,
    .measure = [] { return idleTime(tallyglassWindow()); },
    .measureReference = [] { return idleTime(emptyWindow()); },
});

} // namespace

} // namespace tallyglass::bench
