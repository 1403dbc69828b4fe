// A program with a window, started off screen, that says "ready" when its first frame is drawn.
//
// One thread. The program is killed with its object.

#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace tallyglass::bench {

class WindowProcess {
public:
    /// Starts a program of the build, with these variables in its environment besides the present ones, and
    /// waits until it is ready. Throws when it ends before that.
    explicit WindowProcess(const std::string& program, const std::vector<std::string>& arguments = {},
                           const std::map<std::string, std::string>& environment = {});
    ~WindowProcess();
    WindowProcess(const WindowProcess&) = delete;
    WindowProcess& operator=(const WindowProcess&) = delete;

    [[nodiscard]] double secondsToReady() const { return m_secondsToReady; }
    /// Its own pages, and its share of those that it has in common with other processes.
    [[nodiscard]] double megabytes() const;
    /// Seconds of processor time so far, those of children that it has waited for included.
    [[nodiscard]] double processorSeconds() const;

private:
    pid_t m_pid = -1;
    double m_secondsToReady = 0;
};

} // namespace tallyglass::bench
