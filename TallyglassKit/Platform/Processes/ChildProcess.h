// One child process from its launch to its end, both output streams collected whole.
//
// Any number of children may run at once on different threads. A run works on the calling thread alone: no
// helper thread, no signal handler, and the children of other code in the process aren't touched; but if
// the program ignores the ends of its children (SIGCHLD), a run puts an end to that. A child
// gets the null device as standard input, no other descriptor of this process, and default signal handling.

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
    /// Between the request to terminate (SIGTERM) and the end by force (SIGKILL) of a child that is to stop;
    /// time in which the computer sleeps counts.
    std::chrono::milliseconds killAfter{5000};
    /// Called on the running thread after each read of standard output, with all bytes that it has brought so
    /// far; not after a stop. What it throws comes out of run() when the child has been killed.
    std::function<void(std::size_t total)> onOutput = {};

    /// The child could not be started. The description is the platform's text for the reason.
    class LaunchError : public Error {
        using Error::Error;
    };
    /// The child's output could not be read or kept, or its end not be learned.
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

    /// Launches the child and returns when it has ended and both streams too. A stream ends when the last
    /// process that holds it has closed it, which can be later than the child's own end.
    ///
    /// A stop ends the child and throws Cancelled when it has gone, without waiting for the streams. A token
    /// that is stopped beforehand still starts the child; a stop while only the streams are waited for ends
    /// that wait.
    ///
    /// Throws LaunchError or OutputError. Whatever is thrown, the child has ended by then.
    Result run(std::stop_token stop = {}) const;

    /// Kills every child that a run has launched, and from then on those that are launched, at once: for a
    /// program that is to end without waiting for `killAfter`. Any thread.
    static void killAll();
};

} // namespace tallyglass
