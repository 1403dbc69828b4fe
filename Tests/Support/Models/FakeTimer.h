// A timer whose moments the test chooses.

#pragma once

#include "Tallyglass/Models/Timer.h"

#include <memory>
#include <optional>

namespace tallyglass::test {

class FakeTimer : public Timer {
public:
    struct State {
        FakeTimer* timer = nullptr;      ///< the timer made last; null when it has gone
        std::optional<double> remaining; ///< seconds that it was started with; absent when it is still
        int starts = 0;

        /// Lets the time pass. Requires: it was started.
        void fire() {
            remaining.reset();
            emit timer->timeout();
        }
    };

    explicit FakeTimer(std::shared_ptr<State> state) : m_state(std::move(state)) { m_state->timer = this; }
    ~FakeTimer() override { m_state->timer = nullptr; }

    void start(double seconds) override {
        m_state->remaining = seconds;
        ++m_state->starts;
    }
    void stop() override { m_state->remaining.reset(); }

    [[nodiscard]] static TimerFactory factory(const std::shared_ptr<State>& state) {
        return [state] { return std::make_unique<FakeTimer>(state); };
    }

private:
    std::shared_ptr<State> m_state;
};

} // namespace tallyglass::test
