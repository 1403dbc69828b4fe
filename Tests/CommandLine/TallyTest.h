// The fixture of the tests that run tally over the shared sample machine.

#pragma once

#include "Tests/CommandLine/TallyRun.h"
#include "Tests/Support/SampleMachine.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tallyglass::test {

/// A session over a sample machine.
class TallyTest : public testing::Test, protected TallySession {
protected:
    [[nodiscard]] TallyRun onMachine(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--root", SampleMachine::shared().root().string()});
        return tally(arguments);
    }

    /// The two newest backups.
    [[nodiscard]] std::pair<std::string, std::string> latestPair() const {
        const auto backups = onMachine({"backups", "--json"}).json();
        return {backups.at(backups.size() - 2).at("path"), backups.back().at("path")};
    }
};

} // namespace tallyglass::test
