#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/ErrorText.h"
#include "TallyglassKit/Platform/Processes/TerminationSignals.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace tallyglass {

namespace {

/// A blocked signal reaches the descriptor even if it is ignored.
bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

FileDescriptor opened(int fd) {
    if (fd < 0)
        throw Error("Signals can't be received: " + errorText());
    return FileDescriptor(fd);
}

} // namespace

TerminationSignals::TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_signals = opened(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    m_closed = opened(eventfd(0, EFD_CLOEXEC));
}

TerminationSignals::Event TerminationSignals::wait(std::optional<std::chrono::milliseconds> timeout) const {
    const auto end = std::chrono::steady_clock::now() + timeout.value_or(std::chrono::milliseconds(0));
    while (true) {
        int remaining = -1;
        if (timeout) {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            remaining = static_cast<int>(std::max(left, std::chrono::milliseconds(0)).count());
        }
        std::array requests = {pollfd{m_signals.fd(), POLLIN, 0}, pollfd{m_closed.fd(), POLLIN, 0}};
        const int count = poll(requests.data(), requests.size(), remaining);
        if (count < 0 && errno == EINTR)
            continue;
        if (requests[1].revents != 0)
            return Closed();
        if (count == 0)
            return TimedOut();
        signalfd_siginfo received{};
        if (read(m_signals.fd(), &received, sizeof received) == static_cast<ssize_t>(sizeof received))
            return Received{static_cast<int>(received.ssi_signo)};
    }
}

void TerminationSignals::close() const {
    eventfd_write(m_closed.fd(), 1);
}

} // namespace tallyglass
