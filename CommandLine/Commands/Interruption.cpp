#include "CommandLine/Commands/Interruption.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace tallyglass::commandline {

namespace {

void watch(int signals, int end, std::stop_source source) {
    while (true) {
        pollfd sources[] = {{signals, POLLIN, 0}, {end, POLLIN, 0}};
        if (poll(sources, 2, -1) < 0 && errno == EINTR)
            continue;
        if (sources[1].revents != 0)
            return;
        signalfd_siginfo received{};
        if (read(signals, &received, sizeof received) != static_cast<ssize_t>(sizeof received))
            continue;
        if (!source.request_stop())
            _exit(128 +
                  static_cast<int>(received.ssi_signo)); // asked twice: whatever still runs is left behind
    }
}

/// Under nohup and the like a signal is ignored, and stays so: blocked, it would reach the descriptor all the
/// same.
bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

int checked(int descriptor) {
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "signals can't be watched");
    return descriptor;
}

} // namespace

Interruption::Interruption() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_signals = checked(signalfd(-1, &signals, SFD_CLOEXEC));
    m_end = checked(eventfd(0, EFD_CLOEXEC));
    m_thread = std::thread(watch, m_signals, m_end, m_source);
}

Interruption::~Interruption() {
    eventfd_write(m_end, 1);
    m_thread.join();
    close(m_end);
    close(m_signals);
}

} // namespace tallyglass::commandline
