// A runner whose tmutil is the test child: a function gives the steps of the child for each command.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "Tests/Support/TemporaryFolder.h"

#include <functional>
#include <utility>

namespace tallyglass::test {

/// `steps` is called on the threads that run the commands, `onBytes` when a child has written something.
inline TMUtilRunner
childTool(std::function<TMUtilRunner::Arguments(const TMUtilRunner::Arguments& command)> steps,
          TMUtilRunner::OnBytes onBytes = {}) {
    return TMUtilRunner([child = TMUtilRunner(program("test-child")), steps = std::move(steps),
                         onBytes = std::move(onBytes)](const auto& command, auto killAfter, const auto&,
                                                       std::stop_token stop) {
        return child.runRaw(steps(command), killAfter, onBytes, std::move(stop));
    });
}

} // namespace tallyglass::test
