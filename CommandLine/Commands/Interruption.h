// Turns the signals that end a program into a stop request, so that children are stopped and results are
// stored consistently before the program ends. A second signal kills the children, and ends the program three
// seconds later if it hasn't ended by then; a third ends it at once.
//
// Make one in main before any other thread starts, as TerminationSignals requires. Joins its own thread.

#pragma once

#include "TallyglassKit/Platform/Processes/TerminationSignals.h"

#include <stop_token>
#include <thread>

namespace tallyglass::commandline {

class Interruption {
public:
    Interruption(); ///< throws Error as TerminationSignals does
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    [[nodiscard]] std::stop_token stopToken() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
    TerminationSignals m_signals;
    std::thread m_thread;
};

} // namespace tallyglass::commandline
