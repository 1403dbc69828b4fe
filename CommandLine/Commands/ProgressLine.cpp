#include "CommandLine/Commands/ProgressLine.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

namespace tallyglass::commandline {

namespace {

constexpr auto redrawInterval = std::chrono::milliseconds(100);

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

ProgressLine::ProgressLine() : m_isTerminal(isatty(STDERR_FILENO)) {}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::show(const std::string& text, bool important) {
    if (!m_isTerminal)
        return;
    const std::lock_guard lock(m_mutex);
    const auto now = SteadyClock::now();
    if (m_isShown && !important && now - m_drawn < redrawInterval)
        return;
    m_drawn = now;
    m_isShown = true;
    const auto elapsed = std::chrono::duration_cast<std::chrono::seconds>(now - m_start).count();
    auto line = fmt::format("{}  {} s", text, elapsed);
    if (const auto width = terminalWidth(); line.size() >= width)
        line.resize(startOfCharacter(line, width - 1));
    std::cerr << "\r\033[K" << line << std::flush;
}

void ProgressLine::clear() {
    const std::lock_guard lock(m_mutex);
    if (m_isShown)
        std::cerr << "\r\033[K" << std::flush;
    m_isShown = false;
}

} // namespace tallyglass::commandline
