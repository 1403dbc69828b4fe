// A stop token for work that may take only so long: it is stopped when the time is over, or when another
// token is. The time is measured by a thread, which the destructor ends and joins.
//
//     const Deadline deadline(std::chrono::seconds(5), stop);
//     runner.runRaw(arguments, killAfter, nullptr, deadline.token());
//
// Must outlive the work that it limits. Thread-safe.

#pragma once

#include <chrono>
#include <functional>
#include <stop_token>
#include <thread>

namespace tallyglass {

class Deadline {
public:
    Deadline(std::chrono::milliseconds limit, const std::stop_token& stop);

    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
    std::stop_callback<std::function<void()>> m_onStop; // these two are declared after what they stop
    std::jthread m_timer;
};

} // namespace tallyglass
