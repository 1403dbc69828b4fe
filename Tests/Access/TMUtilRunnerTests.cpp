#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/SystemPaths.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <charconv>

using namespace std::chrono_literals;

namespace tallyglass::test {

namespace {

const std::string denial = "\n tmutil: listbackups requires FULL disk access privileges.\n\n";

class TMUtilRunnerTest : public testing::Test {
protected:
    /// The command's failure, or null.
    [[nodiscard]] std::shared_ptr<TMUtilError> failure(const TMUtilRunner::Arguments& arguments) const {
        try {
            runner.run(arguments);
        } catch (const TMUtilError& error) {
            return std::make_shared<TMUtilError>(error);
        }
        return nullptr;
    }

    ResourceGuard m_guard;
    TMUtilRunner runner{program("test-child")};
};

using TMUtilRunnerRunRaw = TMUtilRunnerTest;
using TMUtilRunnerRun = TMUtilRunnerTest;
using TMUtilRunnerRunDecoding = TMUtilRunnerTest;

} // namespace

TEST(TMUtilRunner, runsTheTmutilOfThisSystemByDefault) {
    EXPECT_EQ(TMUtilRunner().executableURL(), SystemPaths::standard().path("/usr/bin/tmutil"));
}

TEST(TMUtilRunner, madeOfAFunctionCallsIt) {
    const TMUtilRunner runner([](const auto& arguments, auto killAfter, const auto&, const auto&) {
        EXPECT_EQ(killAfter, 5s);
        return TMUtilResult{.exitCode = 2, .stdout = {}, .stderr = arguments.front()};
    });

    try {
        runner.run({"words"});
        ADD_FAILURE();
    } catch (const TMUtilError& error) {
        EXPECT_EQ(error, TMUtilError::commandFailed(2, "words", {"words"}));
    }
}

TEST_F(TMUtilRunnerRunRaw, returnsTheResultWhateverTheExitCode) {
    EXPECT_EQ(runner.runRaw({"--out", "o", "--err", denial, "--exit", "80"}, 5s, nullptr),
              (TMUtilResult{.exitCode = 80, .stdout = "o", .stderr = denial}));
    EXPECT_EQ(runner.runRaw({"--exit", "15"}, 5s, nullptr), runner.runRaw({"--die", "15"}, 5s, nullptr));
}

TEST_F(TMUtilRunnerRunRaw, keepsBytesThatAreNoText) {
    const auto result = runner.runRaw({"--garbage"}, 5s, nullptr);

    EXPECT_EQ(result.stdout.view(), std::string_view("a\0\xFF\xC3(\xE2\x82z", 8));
    EXPECT_EQ(result.stdoutText(), std::string("a\0\uFFFD\uFFFD(\uFFFDz", 13));
    EXPECT_EQ(result.stderrText(), "");
}

TEST_F(TMUtilRunnerRunRaw, isCancelledWithoutBecomingAnError) {
    std::stop_source source;
    const auto stop = [&](std::int64_t) { source.request_stop(); };

    EXPECT_THROW(runner.runRaw({"--ignore-term", "--out", "x", "--pause"}, 1ms, stop, source.get_token()),
                 Cancelled);
    EXPECT_THROW(runner.run({"--pause"}, source.get_token()), Cancelled);
}

TEST_F(TMUtilRunnerRunRaw, failsToLaunchWithThePlatformsText) {
    try {
        TMUtilRunner("/nowhere/tmutil").runRaw({"status"}, 5s, nullptr);
        ADD_FAILURE();
    } catch (const TMUtilError& error) {
        EXPECT_EQ(error, TMUtilError::launchFailed("No such file or directory"));
        EXPECT_EQ(error.errorDescription(), "Could not run tmutil: No such file or directory");
    }
}

TEST_F(TMUtilRunnerRun, reportsTheTotalOfStandardOutput) {
    std::int64_t last = 0;

    const auto result = runner.run({"--flood-err", "200000", "--flood-out", "300000"},
                                   [&](std::int64_t total) { last = total; });

    EXPECT_EQ(result.stdout.size(), 300000U);
    EXPECT_EQ(last, 300000);
}

TEST_F(TMUtilRunnerRun, findsTheMissingPermissionInStandardErrorOfAFailedRun) {
    const TMUtilRunner::Arguments failed = {"--err", denial, "--exit", "80"};

    const auto error = failure(failed);

    EXPECT_EQ(*error, TMUtilError::requiresFullDiskAccess(failed));
    EXPECT_EQ(error->errorDescription(), "This requires Full Disk Access.");
    EXPECT_EQ(failure({"--err", denial, "--exit", "0"}), nullptr);
}

TEST_F(TMUtilRunnerRun, doesNotLookForThePermissionInStandardOutput) {
    const auto error = failure({"--out", denial, "--err", " \r\n\t\u00A0\u2028", "--exit", "80"});

    EXPECT_NE(error->get<TMUtilError::CommandFailed>(), nullptr);
    EXPECT_EQ(error->errorDescription(), "tmutil failed with exit code 80.");
}

TEST_F(TMUtilRunnerRun, failsWithTheErrorTextOfTheCommand) {
    const TMUtilRunner::Arguments failed = {"--err", "\n  /p: Error (-50) \xFF\n \n", "--exit", "1"};

    const auto error = failure(failed);

    EXPECT_EQ(*error, TMUtilError::commandFailed(1, "\n  /p: Error (-50) \uFFFD\n \n", failed));
    EXPECT_EQ(error->errorDescription(), "/p: Error (-50) \uFFFD");
}

TEST_F(TMUtilRunnerRun, takesADeathBySignalAsAFailure) {
    EXPECT_EQ(failure({"--die", "9"})->errorDescription(), "tmutil failed with exit code 9.");
}

TEST_F(TMUtilRunnerRunDecoding, givesWhatTheDecoderMakesOfTheOutput) {
    const auto length = [](std::string_view bytes) { return bytes.size(); };

    EXPECT_EQ(runner.runDecoding(length, {"--flood-out", "70000"}), 70000U);
}

TEST_F(TMUtilRunnerRunDecoding, tellsMalformedOutputApartFromOtherFailures) {
    const TMUtilRunner::Arguments arguments = {"--out", "x"};
    const auto fail = [](std::string_view bytes) -> int { throw Error("no number: " + std::string(bytes)); };

    try {
        runner.runDecoding(fail, arguments);
        ADD_FAILURE();
    } catch (const TMUtilError& error) {
        EXPECT_EQ(error, TMUtilError::malformedOutput("no number: x", arguments));
        EXPECT_EQ(error.errorDescription(), "Could not read tmutil output: no number: x");
    }
}

} // namespace tallyglass::test
