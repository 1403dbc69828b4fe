#include "Tallyglass/Models/JobProgress.h"

#include <fmt/format.h>

#include <utility>

namespace tallyglass {

namespace {

constexpr double tickInterval = 1; // seconds

} // namespace

JobProgress::JobProgress(TimerFactory makeTimer, QObject* parent)
    : QObject(parent), m_makeTimer(std::move(makeTimer)) {}

JobProgress::~JobProgress() = default;

std::string JobProgress::elapsedText() const {
    return fmt::format("{}:{:02}", elapsed() / 60, elapsed() % 60);
}

void JobProgress::begin(const std::string& text) {
    if (!m_ticker) {
        m_ticker = m_makeTimer();
        connect(m_ticker.get(), &Timer::timeout, this, &JobProgress::tick);
    }
    m_elapsed.setValue(0);
    m_text.setValue(text);
    m_ticker->start(tickInterval);
}

void JobProgress::end() {
    if (m_ticker)
        m_ticker->stop();
    m_text.setValue(std::nullopt);
}

void JobProgress::reset() {
    m_elapsed.setValue(0);
    end();
}

void JobProgress::tick() {
    m_elapsed.setValue(elapsed() + 1);
    m_ticker->start(tickInterval);
}

} // namespace tallyglass
