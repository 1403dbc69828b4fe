// One line on a terminal that tells how far a long command is, redrawn in place and gone at the end. Draws
// nothing when standard error isn't a terminal.
//
// Thread-safe: progress arrives from whichever thread does the work.

#pragma once

#include <chrono>
#include <mutex>
#include <string>

namespace tallyglass::commandline {

class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows the text and the seconds since the line was made; cut to the terminal's width, at most ten times
    /// a second unless `important`.
    void show(const std::string& text, bool important = false);

    /// Takes the line away. Further texts draw it again.
    void clear();

private:
    using SteadyClock = std::chrono::steady_clock;

    const bool m_isTerminal;
    const SteadyClock::time_point m_start = SteadyClock::now();
    std::mutex m_mutex;
    SteadyClock::time_point m_drawn;
    bool m_isShown = false;
};

} // namespace tallyglass::commandline
