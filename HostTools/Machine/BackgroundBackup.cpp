#include "HostTools/Machine/BackgroundBackup.h"

#include "HostTools/Machine/BackupRun.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tallyglass {

namespace {

void detach(int keptDescriptor) {
    std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    if (chdir("/") != 0)
        _exit(1);
    const int null = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(null, standard);
    const auto kept = static_cast<unsigned>(keptDescriptor);
    if (kept > 3)
        close_range(3, kept - 1, 0);
    close_range(kept + 1, ~0U, 0);
}

} // namespace

BackgroundBackup::Outcome BackgroundBackup::start(const MachinePaths& machine, const Options& options,
                                                  FILE* errors) {
    auto run = BackupRun::begin(machine, {}, options.destinationID);
    if (!run)
        return Outcome::alreadyRunning;
    if (options.waits) {
        if (const std::int64_t result = run->perform(); result != 0) {
            fmt::print(errors, "tmutil: the backup ended with result {}: {}\n", result, run->failure());
            return Outcome::failed;
        }
        return Outcome::started;
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw FileError(errno, "startbackup");
    if (child > 0) {
        waitpid(child, nullptr, 0);
        return Outcome::started;
    }
    // The classic double fork: a new session, then a process that isn't its leader and is reaped by init.
    setsid();
    if (fork() != 0)
        _exit(0);
    detach(run->lockDescriptor());
    run->perform();
    _exit(0);
}

} // namespace tallyglass
