// The signals by which a person or the system ends a program (SIGINT, SIGTERM, SIGHUP), received one after
// the other in place of their default action. One that is ignored from the start, as under nohup, stays
// ignored.
//
// Make one in main before any other thread starts: threads inherit the blocked signals from there. Children
// of ChildProcess have the default signal mask. One thread waits; close() may be called from any other.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <chrono>
#include <optional>
#include <variant>

namespace tallyglass {

class TerminationSignals {
public:
    struct Received {
        int number;
    };
    struct TimedOut {};
    struct Closed {};
    using Event = std::variant<Received, TimedOut, Closed>;

    /// Throws Error if no descriptor is left for it. The signals stay blocked for the life of the program.
    TerminationSignals();

    /// Waits for the next signal; without a timeout, until there is one or close() is called.
    [[nodiscard]] Event wait(std::optional<std::chrono::milliseconds> timeout = {}) const;

    /// Ends the wait that runs and all later ones.
    void close() const;

private:
    FileDescriptor m_signals;
    FileDescriptor m_closed;
};

} // namespace tallyglass
