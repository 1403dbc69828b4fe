// The fixtures of the tests that run tally.

#pragma once

#include "Tests/CommandLine/TallyRun.h"
#include "Tests/Support/SampleMachine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass::test {

/// A session over the shared sample machine.
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

/// A session over a machine whose tmutil is a script.
class TallyWithScriptTest : public testing::Test, protected TallySession {
protected:
    void tmutilDoes(const std::string& script) {
        const auto file = folder().write("root/usr/bin/tmutil", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    [[nodiscard]] std::string root() const { return (folder() / "root").string(); }
};

} // namespace tallyglass::test
