#include "CommandLine/Commands/Interruption.h"

#include "TallyglassKit/Platform/ErrorNumber.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tallyglass::commandline {

namespace {

/// Milliseconds that the program has to end in order after the second signal.
constexpr int orderlyEnd = 3000;

/// Three signals: to stop, to stop at once, and for want of patience even then.
void watch(int signals, int end, std::stop_source source) {
    int timeout = -1;
    int number = 0;
    while (true) {
        pollfd sources[] = {{signals, POLLIN, 0}, {end, POLLIN, 0}};
        const int count = poll(sources, 2, timeout);
        if (count < 0 && errno == EINTR)
            continue;
        if (sources[1].revents != 0)
            return;
        if (count == 0)
            _exit(128 + number);
        signalfd_siginfo received{};
        if (read(signals, &received, sizeof received) != static_cast<ssize_t>(sizeof received))
            continue;
        number = static_cast<int>(received.ssi_signo);
        if (source.request_stop())
            continue;
        if (timeout >= 0)
            _exit(128 + number);
        ChildProcess::killAll();
        timeout = orderlyEnd;
    }
}

/// Under nohup and the like a signal is ignored, and stays so: blocked, it would reach the descriptor all the
/// same.
bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

FileDescriptor opened(int number) {
    if (number < 0)
        throw Error("Signals can't be watched: " + errorText());
    return FileDescriptor(number);
}

} // namespace

Interruption::Interruption() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_signals = opened(signalfd(-1, &signals, SFD_CLOEXEC));
    m_end = opened(eventfd(0, EFD_CLOEXEC));
    m_thread = std::thread(watch, m_signals.number(), m_end.number(), m_source);
}

Interruption::~Interruption() {
    eventfd_write(m_end.number(), 1);
    m_thread.join();
}

} // namespace tallyglass::commandline
