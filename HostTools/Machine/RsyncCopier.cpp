#include "HostTools/Machine/RsyncCopier.h"

#include "HostTools/Machine/FileOperations.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <sys/xattr.h>

#include <cerrno>
#include <charconv>
#include <csignal>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

// The exit statuses of rsync, from its manual.
constexpr int partialTransfer = 23;
constexpr int vanishedFiles = 24;

bool keepsAttributes(const fs::path& folder) {
    return lgetxattr(folder.c_str(), "user.tallyglass.probe", nullptr, 0) >= 0 || errno != ENOTSUP;
}

std::vector<std::string> arguments(const CopyOrder& order, const fs::path& excludeList) {
    std::vector<std::string> result{
        "rsync",
        "--archive",
        "--hard-links",
        "--no-devices",
        "--no-specials",
        "--info=nonreg0",
        "--numeric-ids",
        "--one-file-system",
        "--relative",
        "--modify-window=-1", // detects changes within one second
        "--no-inc-recursive", // the whole list first, as hard links between far folders need it anyway
        "--info=progress2",
        "--no-human-readable",
        "--outbuf=None",
        "--from0",
        "--exclude-from=" + excludeList.string(),
    };
    if (keepsAttributes(order.volume)) {
        result.emplace_back("--xattrs");
        result.emplace_back("--acls");
    }
    if (order.limit)
        result.push_back(fmt::format("--bwlimit={}", *order.limit));
    if (!order.previous.empty())
        result.push_back("--link-dest=" + order.previous.string());
    const std::string base = order.liveRoot == "/" ? "" : order.liveRoot.string();
    for (const std::string& source : order.sources)
        result.push_back(base + "/." + source);
    result.push_back(order.volume.string() + "/");
    return result;
}

/// This process's environment with the C locale, as rsync's output is parsed.
std::vector<std::string> environmentInC() {
    std::vector<std::string> result{"LC_ALL=C"};
    for (char** setting = environ; *setting; ++setting)
        if (!std::string_view(*setting).starts_with("LC_ALL="))
            result.emplace_back(*setting);
    return result;
}

/// For exec: with a null after the last.
std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (const std::string& text : texts)
        result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

/// A running child with its standard output; terminated by the destructor.
class Child {
public:
    Child(const std::vector<std::string>& command, const fs::path& log, int lock) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw FileError(errno, "rsync");
        m_output = FileDescriptor(ends[0]);
        const FileDescriptor writeEnd(ends[1]);
        const FileDescriptor logFile(open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
        // All memory is allocated before the fork: the child may only make system calls.
        const std::vector<std::string> environment = environmentInC();
        const std::vector<char*> texts = pointers(command);
        const std::vector<char*> settings = pointers(environment);
        const pid_t parent = getpid();
        m_process = fork();
        if (m_process < 0)
            throw FileError(errno, "rsync");
        if (m_process > 0)
            return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(1); // the parent has died already
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(writeEnd.fd(), STDOUT_FILENO);
        dup2(logFile.fd(), STDERR_FILENO);
        if (lock >= 0)
            fcntl(lock, F_SETFD, 0);
        execvpe(texts[0], texts.data(), settings.data());
        _exit(127);
    }
    ~Child() {
        if (m_process <= 0)
            return;
        kill(m_process, SIGTERM);
        m_output.close(); // it may be blocked in a write
        waitpid(m_process, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// The next piece of output, empty after a tenth of a second without any; absent at its end.
    [[nodiscard]] std::optional<std::string> read() {
        pollfd waiting{.fd = m_output.fd(), .events = POLLIN, .revents = 0};
        const int ready = poll(&waiting, 1, 100);
        if (ready == 0 || (ready < 0 && errno == EINTR))
            return "";
        std::string piece(4096, '\0');
        const ssize_t length = ::read(m_output.fd(), piece.data(), piece.size());
        if (length <= 0)
            return std::nullopt;
        piece.resize(static_cast<std::size_t>(length));
        return piece;
    }

    /// Waits for its end and returns its exit status, or -1 if it was killed by a signal.
    [[nodiscard]] int wait() {
        int status = 0;
        while (waitpid(m_process, &status, 0) < 0 && errno == EINTR)
            ;
        m_process = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_process = 0;
    FileDescriptor m_output;
};

/// A partial transfer is accepted if only the sender reported errors: files that the user may not read.
void checkExit(int status, const fs::path& logFile) {
    if (status == 0 || status == vanishedFiles)
        return;
    const std::string log = readWholeFile(logFile).value_or("");
    if (log.find("No space left on device") != std::string::npos ||
        log.find("Disk quota exceeded") != std::string::npos)
        throw BackupFailure(BackupResult::outOfSpace, log);
    const bool writingFailed = log.find("[receiver]") != std::string::npos ||
                               log.find("[generator]") != std::string::npos || log.empty();
    if (status == partialTransfer && !writingFailed)
        return;
    throw BackupFailure(BackupResult::copyFailed,
                        log.empty() ? fmt::format("rsync ended with status {}", status) : log);
}

} // namespace

void readProgress(std::string_view output, CopyProgress& progress) {
    const auto number = [](std::string_view text, std::int64_t& value) {
        std::from_chars(text.data(), text.data() + text.size(), value);
    };
    if (const auto percent = output.rfind('%'); percent != std::string_view::npos) {
        const auto start = output.find_last_of("\r\n", percent);
        std::string_view line = output.substr(start == std::string_view::npos ? 0 : start + 1);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        if (start != std::string_view::npos)
            number(line, progress.bytes);
    }
    constexpr std::string_view mark = "(xfr#";
    if (const auto transfer = output.rfind(mark); transfer != std::string_view::npos)
        number(output.substr(transfer + mark.size()), progress.files);
}

std::string excludePattern(const std::string& logicalPath) {
    if (logicalPath.find_first_of("*?[") == std::string::npos)
        return logicalPath;
    std::string result;
    for (const char character : logicalPath) {
        if (std::string_view("*?[]\\").find(character) != std::string_view::npos)
            result += '\\';
        result += character;
    }
    return result;
}

void RsyncCopier::copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) {
    const fs::path excludeList = order.runFolder / "exclude.list";
    const fs::path log = order.runFolder / "copy.log";
    std::string patterns;
    for (const std::string& path : order.excluded)
        patterns.append(excludePattern(path)).push_back('\0');
    replaceFile(excludeList, patterns, Durability::memory);

    Child child(arguments(order, excludeList), log, m_lock);
    CopyProgress progress;
    for (auto piece = child.read(); piece; piece = child.read()) {
        readProgress(*piece, progress);
        checkpoint(progress);
    }
    checkExit(child.wait(), log);
}

} // namespace tallyglass
