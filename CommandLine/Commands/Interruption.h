// Turns the signals by which a person or a system ends a program (SIGINT, SIGTERM, SIGHUP) into a stop
// request, so that children are stopped and results are kept in order before the program ends. A second
// signal kills the children, and ends the program three seconds later if it hasn't ended by then; a third
// ends it at once.
//
// Make one in main before any other thread starts: threads inherit the blocked signals from there. It ends
// its own thread. Children get the default signal mask from the child-process layer.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <stop_token>
#include <thread>

namespace tallyglass::commandline {

class Interruption {
public:
    Interruption(); ///< throws Error if the system has no descriptor left for it
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    [[nodiscard]] std::stop_token stopToken() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
    FileDescriptor m_signals; ///< signalfd
    FileDescriptor m_end;     ///< eventfd that wakes the thread for the last time
    std::thread m_thread;
};

} // namespace tallyglass::commandline
