// The only object that runs tmutil.
//
// An immutable value that is cheap to copy. Thread-safe; any number of children may run at once. A run uses
// the calling thread only and leaves no thread, child or descriptor behind. Tests without children use a
// runner that calls a function.

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
    /// Called on the calling thread after each read of standard output, with the total of bytes read so far.
    /// An exception from it kills the child and propagates out of the run.
    using OnBytes = std::function<void(std::int64_t total)>;
    /// Replaces runRaw in a runner without children. Must be callable from several threads at once.
    using RunRaw = std::function<TMUtilResult(const Arguments&, std::chrono::milliseconds killAfter,
                                              const OnBytes&, std::stop_token)>;

    /// The system path of tmutil.
    static constexpr std::string_view executablePath = "/usr/bin/tmutil";
    static constexpr std::chrono::seconds defaultKillAfter{5};

    /// Runs the tmutil at executablePath under SystemPaths::standard().
    TMUtilRunner();
    /// Runs the program at `path`.
    explicit TMUtilRunner(std::string path);
    /// Calls `fake` instead of running a program.
    explicit TMUtilRunner(RunRaw fake);

    /// The path of the program to launch; empty for a runner made of a function.
    [[nodiscard]] const std::string& executableURL() const { return *m_executable; }

    /// Runs the command and returns its result, whatever the exit code. The arguments are passed unmodified;
    /// the program inherits the environment and the working directory and has no input.
    ///
    /// A stop sends SIGTERM and, `killAfter` later, SIGKILL, and throws Cancelled as soon as the child has
    /// ended; a token that is stopped beforehand still starts the child. Without a stop the run lasts until
    /// both streams are at their end, even if other processes keep them open.
    ///
    /// Throws TMUtilError: launchFailed if the program can't be started, malformedOutput if its output can't
    /// be stored.
    TMUtilResult runRaw(const Arguments& arguments, std::chrono::milliseconds killAfter,
                        const OnBytes& onBytes, std::stop_token stop = {}) const;

    /// runRaw with defaultKillAfter, for commands that must succeed: an exit code other than 0 throws
    /// requiresFullDiskAccess if standard error mentions it, else commandFailed.
    TMUtilResult run(const Arguments& arguments, std::stop_token stop = {}) const;
    TMUtilResult run(const Arguments& arguments, const OnBytes& onBytes, std::stop_token stop = {}) const;

    /// run, and the result of `decode` for the bytes of standard output. An Error from it becomes
    /// malformedOutput.
    template <std::invocable<std::string_view> Decode>
    auto runDecoding(Decode&& decode, const Arguments& arguments, std::stop_token stop = {}) const
        -> std::invoke_result_t<Decode, std::string_view>;

    // Verbs. Each is one run and throws what run() throws.

    /// What the backup engine is doing; idle for invalid output.
    [[nodiscard]] BackupStatus status(std::stop_token stop = {}) const;
    /// Start and stop a backup. Both return as soon as tmutil does.
    void startBackup(std::stop_token stop = {}) const;
    void stopBackup(std::stop_token stop = {}) const;

    /// The roots of all backups, oldest first.
    [[nodiscard]] std::vector<std::string> backupPathsThrowing(std::stop_token stop = {}) const;
    /// The same, but empty after any failure or a stop.
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
