// A runner with a function for tmutil, which records its calls.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tallyglass::test {

class FakeRunner {
public:
    using Arguments = TMUtilRunner::Arguments;

    /// Exits 0 with `output` on standard output, whatever the command.
    explicit FakeRunner(std::string output)
        : FakeRunner([output = std::move(output)](std::stop_token) {
              return TMUtilResult{.exitCode = 0, .stdout = output, .stderr = {}};
          }) {}
    /// Fails with `exitCode` and `error` on standard error.
    FakeRunner(std::int32_t exitCode, std::string error)
        : FakeRunner([exitCode, error = std::move(error)](std::stop_token) {
              return TMUtilResult{.exitCode = exitCode, .stdout = {}, .stderr = error};
          }) {}
    explicit FakeRunner(std::function<TMUtilResult(std::stop_token)> answer)
        : m_runner([calls = m_calls, answer = std::move(answer)](const Arguments& arguments, auto,
                                                                 const auto&, std::stop_token stop) {
              {
                  const std::lock_guard guard(calls->mutex);
                  calls->arguments.push_back(arguments);
              }
              return answer(std::move(stop));
          }) {}

    operator const TMUtilRunner&() const { return m_runner; }
    const TMUtilRunner* operator->() const { return &m_runner; }

    [[nodiscard]] std::vector<Arguments> calls() const {
        const std::lock_guard guard(m_calls->mutex);
        return m_calls->arguments;
    }

private:
    struct Calls {
        std::mutex mutex;
        std::vector<Arguments> arguments;
    };

    std::shared_ptr<Calls> m_calls = std::make_shared<Calls>();
    TMUtilRunner m_runner;
};

} // namespace tallyglass::test
