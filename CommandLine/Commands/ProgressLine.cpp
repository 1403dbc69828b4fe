#include "CommandLine/Commands/ProgressLine.h"

#include "TallyglassKit/Platform/Processes/Terminal.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <fmt/core.h>

#include <iostream>

namespace tallyglass::commandline {

namespace {

constexpr auto redrawInterval = std::chrono::milliseconds(100);
constexpr auto countInterval = std::chrono::seconds(1);

} // namespace

ProgressLine::ProgressLine() : m_isTerminal(standardErrorIsTerminal()) {
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
    const auto line = fmt::format("{}  {} s", m_text, elapsed);
    std::cerr << "\r\033[K" << utf8Prefix(line, standardErrorWidth() - 1) << std::flush;
}

} // namespace tallyglass::commandline
