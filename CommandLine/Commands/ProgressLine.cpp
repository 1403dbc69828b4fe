#include "CommandLine/Commands/ProgressLine.h"

#include <fmt/core.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

namespace tallyglass::commandline {

namespace {

constexpr auto redrawInterval = std::chrono::milliseconds(100);
constexpr auto countInterval = std::chrono::seconds(1);

std::size_t terminalWidth() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// The largest index up to `limit` at which a UTF-8 character begins.
std::size_t startOfCharacter(const std::string& text, std::size_t limit) {
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0U) == 0x80U)
        --limit;
    return limit;
}

} // namespace

ProgressLine::ProgressLine() : m_isTerminal(isatty(STDERR_FILENO)) {
    if (m_isTerminal)
        m_counter = std::jthread([this](const std::stop_token& stop) { keepCounting(stop); });
}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::show(const std::string& text) {
    if (!m_isTerminal)
        return;
    const std::lock_guard lock(m_mutex);
    const bool isFirst = m_text.empty();
    m_text = text;
    if (isFirst || SteadyClock::now() - m_drawn >= redrawInterval)
        draw();
}

void ProgressLine::clear() {
    const std::lock_guard lock(m_mutex);
    if (!m_text.empty())
        std::cerr << "\r\033[K" << std::flush;
    m_text.clear();
}

void ProgressLine::keepCounting(const std::stop_token& stop) {
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        m_ended.wait_for(lock, stop, countInterval, [] { return false; });
        if (!m_text.empty() && !stop.stop_requested())
            draw();
    }
}

void ProgressLine::draw() {
    m_drawn = SteadyClock::now();
    const auto elapsed = std::chrono::duration_cast<std::chrono::seconds>(m_drawn - m_start).count();
    auto line = fmt::format("{}  {} s", m_text, elapsed);
    if (const auto width = terminalWidth(); line.size() >= width)
        line.resize(startOfCharacter(line, width - 1));
    std::cerr << "\r\033[K" << line << std::flush;
}

} // namespace tallyglass::commandline
