// Runs one child process to its end and collects both of its output streams.
//
// Any number of children may run at once on different threads. A run uses the calling thread only: no helper
// thread, no signal handler, and other children of the process aren't touched; but if the program ignores
// SIGCHLD, a run resets that. A child gets the null device as standard input, no other descriptor of this
// process, and default signal handling.

#pragma once

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/ByteBuffer.h"

#include <chrono>
#include <functional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass {

struct ChildProcess {
    std::string executable;                  ///< a path; no search for a bare name
    std::vector<std::string> arguments = {}; ///< without the executable itself
    /// The delay between SIGTERM and SIGKILL for a child that is to stop; includes time in which the computer
    /// sleeps.
    std::chrono::milliseconds killAfter{5000};
    /// Called on the calling thread after each read of standard output, with the total of bytes read so far;
    /// not after a stop. An exception from it kills the child and propagates out of run().
    std::function<void(std::size_t total)> onOutput = {};

    /// The child could not be started. The description is the platform's text for the error.
    class LaunchError : public Error {
        using Error::Error;
    };
    /// The child's output could not be read or stored, or its exit status not be obtained.
    class OutputError : public Error {
        using Error::Error;
    };

    struct Exited {
        int status;
        friend bool operator==(const Exited&, const Exited&) = default;
    };
    struct Signalled {
        int signal;
        friend bool operator==(const Signalled&, const Signalled&) = default;
    };
    struct Result {
        std::variant<Exited, Signalled> end;
        ByteBuffer output; ///< standard output
        ByteBuffer errors; ///< standard error
    };

    /// Launches the child and returns when it has ended and both streams are at their end. A stream ends when
    /// the last process that has it open has closed it, which can be later than the child's own end.
    ///
    /// A stop terminates the child and throws Cancelled when it has ended, without waiting for the streams. A
    /// token that is stopped beforehand still starts the child; a stop while only the streams are open ends
    /// the wait for them.
    ///
    /// Throws LaunchError or OutputError. Whenever it throws, the child has ended.
    Result run(std::stop_token stop = {}) const;

    /// Kills every running child, and from then on each child as soon as it is launched: for a program that
    /// is to exit without waiting for `killAfter`. Any thread.
    static void killAll();
};

} // namespace tallyglass
