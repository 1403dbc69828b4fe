#include "CommandLine/Commands/Interruption.h"

#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <chrono>
#include <cstdlib>
#include <optional>
#include <variant>

namespace tallyglass::commandline {

namespace {

/// The time for an orderly end after the second signal.
constexpr std::chrono::milliseconds orderlyEnd(3000);

void watch(const TerminationSignals& signals, std::stop_source source) {
    int number = 0;
    std::optional<std::chrono::milliseconds> timeout;
    while (true) {
        const auto event = signals.wait(timeout);
        if (std::holds_alternative<TerminationSignals::Closed>(event))
            return;
        const auto* received = std::get_if<TerminationSignals::Received>(&event);
        if (received)
            number = received->number;
        if (received && source.request_stop())
            continue;
        if (timeout) // a third signal, or no end in time
            std::_Exit(128 + number);
        ChildProcess::killAll();
        timeout = orderlyEnd;
    }
}

} // namespace

Interruption::Interruption() : m_thread([this] { watch(m_signals, m_source); }) {}

Interruption::~Interruption() {
    m_signals.close();
    m_thread.join();
}

} // namespace tallyglass::commandline
