#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"
#include "Tests/Support/NamedPipe.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/Sanitizers.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

using namespace std::chrono_literals;
using testing::IsEmpty;

namespace tallyglass::test {

namespace {

using Ended = std::variant<ChildProcess::Exited, ChildProcess::Signalled>;

ChildProcess child(std::vector<std::string> steps) {
    return {.executable = program("test-child"), .arguments = std::move(steps)};
}

ChildProcess::Result run(std::vector<std::string> steps) {
    return child(std::move(steps)).run();
}

/// Whether `bytes` are the child's flood of that size.
bool isFlood(std::string_view bytes, std::size_t size) {
    std::string block(std::size_t{64} << 10, '\0');
    for (std::size_t index = 0; index < block.size(); ++index)
        block[index] = static_cast<char>(index % 251);
    if (bytes.size() != size)
        return false;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), block.size())))
        if (bytes.substr(0, block.size()) != std::string_view(block).substr(0, bytes.size()))
            return false;
    return true;
}

/// Runs the child and stops it after its first output.
void stopAtOutput(ChildProcess child) {
    std::stop_source source;
    child.onOutput = [&](std::size_t) { source.request_stop(); };
    EXPECT_THROW(child.run(source.get_token()), Cancelled);
}

/// Checks after each test that no descriptor, child or thread was leaked.
class ChildProcessTest : public testing::Test {
    ResourceGuard m_guard;
};

using ChildProcessOutput = ChildProcessTest;
using ChildProcessEnvironment = ChildProcessTest;
using ChildProcessEnd = ChildProcessTest;
using ChildProcessStop = ChildProcessTest;
using ChildProcessFailure = ChildProcessTest;

} // namespace

TEST_F(ChildProcessOutput, isEmptyOfASilentChildAndNotReported) {
    ChildProcess silent = child({});
    silent.onOutput = [](std::size_t) { ADD_FAILURE(); };

    const auto result = silent.run();

    EXPECT_EQ(result.end, Ended(ChildProcess::Exited{0}));
    EXPECT_THAT(result.output.view(), IsEmpty());
    EXPECT_THAT(result.errors.view(), IsEmpty());
}

TEST_F(ChildProcessOutput, isWholeWhicheverStreamIsFilledFirst) {
    const auto errorsFirst = run({"--flood-err", "3000000", "--flood-out", "3000001"});
    const auto outputFirst = run({"--flood-out", "3000000", "--flood-err", "3000001"});

    EXPECT_TRUE(isFlood(errorsFirst.errors, 3000000));
    EXPECT_TRUE(isFlood(errorsFirst.output, 3000001));
    EXPECT_TRUE(isFlood(outputFirst.output, 3000000));
    EXPECT_TRUE(isFlood(outputFirst.errors, 3000001));
}

TEST_F(ChildProcessOutput, canBeAGibibyte) {
    constexpr std::size_t size = std::size_t{1} << 30;

    const auto result = run({"--flood-out", std::to_string(size)});

    EXPECT_TRUE(isFlood(result.output, size));
}

TEST_F(ChildProcessOutput, isReportedByItsRunningTotal) {
    std::vector<std::size_t> totals;
    ChildProcess reported = child({"--flood-err", "100000", "--flood-out", "1000000"});
    reported.onOutput = [&](std::size_t total) { totals.push_back(total); };

    reported.run();

    EXPECT_GT(totals.front(), 0U);
    EXPECT_TRUE(std::ranges::is_sorted(totals, std::ranges::less_equal{}));
    EXPECT_EQ(std::ranges::adjacent_find(totals), totals.end());
    EXPECT_EQ(totals.back(), 1000000U);
}

TEST_F(ChildProcessEnvironment, argumentsArriveUnmodified) {
    const std::vector<std::string> arguments = {"", " a  b ", "\"q'\\$HOME`*", "n\nl", "Öl/\xFF", "-x"};
    std::vector<std::string> steps = {"--echo"};
    std::string expected;
    for (const auto& argument : arguments) {
        steps.push_back(argument);
        expected.append(argument).push_back('\0');
    }

    EXPECT_EQ(run(steps).output.view(), expected);
}

TEST_F(ChildProcessEnvironment, descriptorsOfThisProcessStayInIt) {
    const FileDescriptor inheritable(open("/", O_RDONLY | O_DIRECTORY));

    const auto result = run({"--list-descriptors"});

    EXPECT_THAT(std::string(result.output.view()),
                testing::MatchesRegex("(0 /dev/null\n|1 pipe:\\S+\n|2 pipe:\\S+\n)+"));
    EXPECT_EQ(std::ranges::count(result.output.view(), '\n'), 3);
}

TEST_F(ChildProcessEnvironment, blockedAndIgnoredSignalsAreNotPassedOn) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGCHLD);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipeAction = std::signal(SIGPIPE, SIG_IGN);

    const auto result = run({"--list-signals"});
    std::signal(SIGPIPE, pipeAction);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    EXPECT_EQ(result.output.view(), "");
}

TEST_F(ChildProcessEnvironment, environmentAndWorkingDirectoryAreInherited) {
    setenv("TALLYGLASS_TEST", "some value", 1);

    const auto result = run({"--environment", "TALLYGLASS_TEST", "--print-working-directory"});

    EXPECT_EQ(result.output.view(), "some value" + std::filesystem::current_path().string());
}

TEST_F(ChildProcessEnvironment, thisProcessNeedsNoStandardStreams) {
    const auto runWithoutStreams = [] {
        for (const int descriptor : {0, 1, 2})
            close(descriptor);
        const auto result = run({"--out", "o", "--err", "e", "--list-descriptors"});
        const bool isRight =
            result.output.view().starts_with("o0 /dev/null\n1 pipe:") && result.errors.view() == "e";
        std::_Exit(isRight ? 0 : 1);
    };

    EXPECT_EXIT(runWithoutStreams(), testing::ExitedWithCode(0), "");
}

TEST_F(ChildProcessEnd, isTheExitStatusOrTheSignal) {
    EXPECT_EQ(run({"--exit", "255"}).end, Ended(ChildProcess::Exited{255}));
    EXPECT_EQ(run({"--exit", "15"}).end, Ended(ChildProcess::Exited{15}));
    EXPECT_EQ(run({"--die", "15"}).end, Ended(ChildProcess::Signalled{15}));
    EXPECT_EQ(run({"--out", "x", "--die", "9"}).end, Ended(ChildProcess::Signalled{9}));
}

TEST_F(ChildProcessEnd, isLearnedInAProgramThatWasStartedToIgnoreIt) {
    struct sigaction before {};
    struct sigaction ignoring {};
    ignoring.sa_handler = SIG_IGN;
    sigaction(SIGCHLD, &ignoring, &before);
    const auto first = run({"--exit", "7"});
    ignoring.sa_handler = SIG_DFL;
    ignoring.sa_flags = SA_NOCLDWAIT;
    sigaction(SIGCHLD, &ignoring, nullptr);
    const auto second = run({"--exit", "8"});
    sigaction(SIGCHLD, &before, nullptr);

    EXPECT_EQ(first.end, Ended(ChildProcess::Exited{7}));
    EXPECT_EQ(second.end, Ended(ChildProcess::Exited{8}));
}

TEST_F(ChildProcessEnd, isWaitedForBeyondTheEndOfTheStreams) {
    const TemporaryFolder folder;
    const NamedPipe pipe(folder / "pipe");
    auto result =
        std::async(std::launch::async, run,
                   std::vector<std::string>{"--close-streams", "--wait-for", pipe.path(), "--exit", "7"});

    pipe.release();

    EXPECT_EQ(result.get().end, Ended(ChildProcess::Exited{7}));
}

TEST_F(ChildProcessEnd, isFollowedByTheEndOfTheStreamsThatAGrandchildHolds) {
    const TemporaryFolder folder;
    const NamedPipe pipe(folder / "pipe");
    auto pending =
        std::async(std::launch::async, run,
                   std::vector<std::string>{"--out", "early ", "--grandchild", pipe.path(), "--exit", "3"});

    pipe.release();
    const auto result = pending.get();

    EXPECT_EQ(result.end, Ended(ChildProcess::Exited{3}));
    EXPECT_EQ(result.output.view(), "early late");
}

TEST_F(ChildProcessEnd, comesToManyChildrenAtOnce) {
    std::atomic<int> finished = 0;
    std::atomic<int> cancelled = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 16; ++thread)
        threads.emplace_back([&, thread] {
            for (int number = 0; number < 8; ++number) {
                const std::size_t size = 100000 + thread * 1000 + number;
                const auto result =
                    run({"--flood-out", std::to_string(size), "--exit", std::to_string(thread)});
                if (isFlood(result.output, size) && result.end == Ended(ChildProcess::Exited{thread}))
                    ++finished;
                std::stop_source source;
                std::jthread stopper([&] { source.request_stop(); });
                try {
                    child({"--pause"}).run(source.get_token());
                } catch (const Cancelled&) {
                    ++cancelled;
                }
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(finished, 16 * 8);
    EXPECT_EQ(cancelled, 16 * 8);
}

TEST_F(ChildProcessStop, asksTheChildToTerminate) {
    for (const char* atTerm : {"--exit-at-term", "--flood-at-term"}) {
        ChildProcess stopped = child({atTerm, "--out", "ready", "--pause"});
        stopped.killAfter = std::chrono::milliseconds::max(); // so nothing but SIGTERM can end it
        stopAtOutput(stopped);
    }
}

TEST_F(ChildProcessStop, killsAChildThatWontTerminate) {
    for (const auto killAfter : {5ms, 0ms, -5ms})
        for (const char* activity : {"--pause", "--flood-for-ever"}) {
            ChildProcess stubborn = child({"--ignore-term", "--out", "ready", activity});
            stubborn.killAfter = killAfter;
            stopAtOutput(stubborn);
        }
}

TEST_F(ChildProcessStop, ofAllChildrenKillsThemAndThoseThatFollow) {
    const auto killBoth = [] {
        ChildProcess running = child({"--ignore-term", "--out", "ready", "--pause"});
        running.onOutput = [](std::size_t) { ChildProcess::killAll(); };
        const bool areKilled = running.run().end == Ended(ChildProcess::Signalled{SIGKILL}) &&
                               run({"--pause"}).end == Ended(ChildProcess::Signalled{SIGKILL});
        std::_Exit(areKilled && ProcessResources::now().children == 0 ? 0 : 1);
    };

    EXPECT_EXIT(killBoth(), testing::ExitedWithCode(0), "");
}

TEST_F(ChildProcessStop, thatComesBeforehandStillLaunchesTheChild) {
    std::stop_source source;
    source.request_stop();

    EXPECT_THROW(child({"--pause"}).run(source.get_token()), Cancelled);
    EXPECT_THROW(ChildProcess{.executable = "/nowhere"}.run(source.get_token()), ChildProcess::LaunchError);
}

TEST_F(ChildProcessStop, endsTheWaitForAGrandchildsStreams) {
    const TemporaryFolder folder;
    const NamedPipe pipe(folder / "pipe");
    std::stop_source source;
    std::promise<void> launched;
    ChildProcess parent = child({"--grandchild", pipe.path(), "--out", "launched"});
    parent.onOutput = [&](std::size_t) { launched.set_value(); };
    auto pending = std::async(std::launch::async, [&] { return parent.run(source.get_token()); });
    launched.get_future().wait();
    while (ProcessResources::now().children > 0)
        std::this_thread::yield(); // until the child has been waited for

    source.request_stop();

    EXPECT_THROW(pending.get(), Cancelled);
    pipe.release();
}

TEST_F(ChildProcessStop, afterTheEndChangesNothing) {
    std::stop_source source;

    const auto result = child({"--out", "x"}).run(source.get_token());
    source.request_stop();

    EXPECT_EQ(result.output.view(), "x");
}

TEST_F(ChildProcessFailure, tellsWhyTheChildCouldNotBeLaunched) {
    const TemporaryFolder folder;
    const auto words = [](const std::string& path, std::vector<std::string> arguments = {}) -> std::string {
        try {
            ChildProcess{.executable = path, .arguments = std::move(arguments)}.run();
        } catch (const ChildProcess::LaunchError& failure) {
            return failure.what();
        }
        return "";
    };
    const auto notAProgram = folder.write("not-a-program", "some text");
    const auto garbage = folder.write("garbage", std::string("\0\1\2\3", 4));
    chmod(garbage.c_str(), S_IRWXU);

    EXPECT_EQ(words(folder / "missing"), "No such file or directory");
    EXPECT_EQ(words(""), "No such file or directory");
    EXPECT_EQ(words(folder.path()), "Permission denied");
    EXPECT_EQ(words(notAProgram), "Permission denied");
    EXPECT_EQ(words(garbage), "Exec format error");
    EXPECT_EQ(words(notAProgram / "below"), "Not a directory");
    EXPECT_EQ(words(program("test-child"), {std::string("a\0b", 3)}), "Invalid argument");
    EXPECT_EQ(words(program("test-child"), {std::string(std::size_t{1} << 20, 'x')}),
              "Argument list too long");
}

TEST_F(ChildProcessFailure, ofTheCallbackKillsTheChildAndIsPassedOn) {
    ChildProcess failing = child({"--ignore-term", "--out", "ready", "--pause"});
    failing.onOutput = [](std::size_t) { throw std::logic_error("of the callback"); };

    EXPECT_THROW(failing.run(), std::logic_error);
}

std::string described(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& known) {
        return known.what();
    }
}

TEST_F(ChildProcessFailure, leavesNothingWhenDescriptorsRunOut) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const auto inUse = static_cast<rlim_t>(open("/", O_RDONLY));
    close(static_cast<int>(inUse));
    std::stop_source source;
    int failures = 0;
    int successes = 0;

    for (rlim_t more = 0; more < 12; ++more) {
        const rlimit few = {inUse + more, before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
        std::exception_ptr failure;
        try {
            child({}).run(source.get_token());
            ++successes;
        } catch (...) {
            failure = std::current_exception(); // a sanitizer needs descriptors to look into it
        }
        setrlimit(RLIMIT_NOFILE, &before);
        if (failure) {
            ++failures;
            EXPECT_THROW(std::rethrow_exception(failure), ChildProcess::LaunchError);
            EXPECT_EQ(described(failure), "Too many open files");
        }
    }

    EXPECT_GT(failures, 3);
    EXPECT_GT(successes, 0);
}

TEST_F(ChildProcessFailure, isToldWhenTheOutputFindsNoMemory) {
    if (isSanitized)
        GTEST_SKIP();
    const auto runWithLittleMemory = [] {
        std::size_t pagesInUse = 0;
        std::ifstream("/proc/self/statm") >> pagesInUse;
        const rlimit little = {pagesInUse * sysconf(_SC_PAGESIZE) + (std::size_t{256} << 20), RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &little);
        try {
            run({"--flood-out", std::to_string(std::size_t{1} << 33)});
        } catch (const ChildProcess::OutputError& failure) {
            std::_Exit(failure.what() == std::string("Cannot allocate memory") ? 0 : 1);
        }
        std::_Exit(2);
    };

    EXPECT_EXIT(runWithLittleMemory(), testing::ExitedWithCode(0), "");
}

} // namespace tallyglass::test
