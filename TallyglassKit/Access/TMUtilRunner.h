// The one object that starts tmutil, to which every verb of the system comes down.
//
// An immutable value that is cheap to copy; any thread may use one object at any time, and nothing limits how
// many children run at once. A run happens on the calling thread alone and leaves no thread, child or
// descriptor behind. Logic that is tested without children gets a runner made of a function.

#pragma once

#include "TallyglassKit/Access/TMUtilError.h"
#include "TallyglassKit/Access/TMUtilResult.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tallyglass {

struct BackupStatus;

class TMUtilRunner {
public:
    using Arguments = TMUtilError::Arguments;
    /// Called after each read of standard output with the number of bytes that it has brought so far, on the
    /// thread that runs. What it throws ends the child and comes out of the run.
    using OnBytes = std::function<void(std::int64_t total)>;
    /// What stands for runRaw in a runner without children. Must be callable from several threads at once.
    using RunRaw = std::function<TMUtilResult(const Arguments&, std::chrono::milliseconds killAfter,
                                              const OnBytes&, std::stop_token)>;

    /// Where the system keeps tmutil.
    static constexpr std::string_view executablePath = "/usr/bin/tmutil";
    static constexpr std::chrono::seconds defaultKillAfter{5};

    /// Runs the tmutil of this system, as SystemPaths::standard() finds it.
    TMUtilRunner();
    /// Runs the program at `path`.
    explicit TMUtilRunner(std::string path);
    /// Calls `standIn` instead of running a program.
    explicit TMUtilRunner(RunRaw standIn);

    /// The path of the program to launch; empty for a runner made of a function.
    [[nodiscard]] const std::string& executableURL() const { return *m_executable; }

    /// Runs the command and returns what came of it, whatever the exit code. The arguments reach the program
    /// as they stand; it inherits the environment and the working directory and reads nothing.
    ///
    /// A stop sends SIGTERM and, `killAfter` later, SIGKILL, and throws Cancelled as soon as the child has
    /// gone; a token that is stopped beforehand still starts the child. Without a stop the run lasts until
    /// both streams have ended, even if others than the child hold them open.
    ///
    /// Throws TMUtilError: launchFailed if the program can't be started, malformedOutput if its output can't
    /// be kept.
    TMUtilResult runRaw(const Arguments& arguments, std::chrono::milliseconds killAfter,
                        const OnBytes& onBytes, std::stop_token stop = {}) const;

    /// runRaw with defaultKillAfter, for commands that must have worked: another exit code than 0 throws
    /// requiresFullDiskAccess if standard error mentions it, else commandFailed.
    TMUtilResult run(const Arguments& arguments, std::stop_token stop = {}) const;
    TMUtilResult run(const Arguments& arguments, const OnBytes& onBytes, std::stop_token stop = {}) const;

    /// run, and then `decode` over the bytes of standard output, which gives the result. An Error that it
    /// throws becomes malformedOutput.
    template <std::invocable<std::string_view> Decode>
    auto runDecoding(Decode&& decode, const Arguments& arguments, std::stop_token stop = {}) const
        -> std::invoke_result_t<Decode, std::string_view>;

    // Verbs. Each is one run and throws what run() throws.

    /// What the backup engine is doing; output that can't be understood counts as idle.
    [[nodiscard]] BackupStatus status(std::stop_token stop = {}) const;
    /// Start and stop a backup. Both return as soon as tmutil does.
    void startBackup(std::stop_token stop = {}) const;
    void stopBackup(std::stop_token stop = {}) const;

    /// The roots of all backups, oldest first.
    [[nodiscard]] std::vector<std::string> backupPathsThrowing(std::stop_token stop = {}) const;
    /// The same, and empty after any failure, a stop among them.
    [[nodiscard]] std::vector<std::string> backupPaths(std::stop_token stop = {}) const;

private:
    std::shared_ptr<const std::string> m_executable;
    std::shared_ptr<const RunRaw> m_runRaw;
};

template <std::invocable<std::string_view> Decode>
auto TMUtilRunner::runDecoding(Decode&& decode, const Arguments& arguments, std::stop_token stop) const
    -> std::invoke_result_t<Decode, std::string_view> {
    const TMUtilResult result = run(arguments, std::move(stop));
    try {
        return std::forward<Decode>(decode)(result.stdout.view());
    } catch (const Error& failure) {
        throw TMUtilError::malformedOutput(failure.errorDescription(), arguments);
    }
}

} // namespace tallyglass
