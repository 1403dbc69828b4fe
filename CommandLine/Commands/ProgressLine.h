// One line on the terminal that shows how far a long command is, redrawn in place and removed at the end.
// Draws nothing when standard error isn't a terminal.
//
// Thread-safe: progress arrives from whichever thread does the work.

#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

namespace tallyglass::commandline {

class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows the text and the seconds since the line was made, cut to the terminal's width. Texts that follow
    /// each other too fast to be read are skipped.
    void show(const std::string& text);

    /// Removes the line. Further texts draw it again.
    void clear();

private:
    using SteadyClock = std::chrono::steady_clock;

    void keepCounting(const std::stop_token& stop);
    void draw(); ///< Requires: the mutex is held.

    const bool m_isTerminal;
    const SteadyClock::time_point m_start = SteadyClock::now();
    std::mutex m_mutex;
    std::condition_variable_any m_ended;
    SteadyClock::time_point m_drawn;
    std::string m_text;     ///< empty while nothing is shown
    std::jthread m_counter; // declared last, so that it ends before what it uses is destroyed
};

} // namespace tallyglass::commandline
