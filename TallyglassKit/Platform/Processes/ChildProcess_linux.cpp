// The child is referred to by a pidfd from its launch on, so that no signal can reach another process with a
// reused pid. One poll() waits for all events: output, the child's end, a stop, the delay before SIGKILL.

#include "TallyglassKit/Platform/ErrorText.h"
#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <fcntl.h>
#include <paths.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <optional>
#include <span>

extern "C" { // glibc 2.36 lacks it in this header
#include <sys/pidfd.h>
}

namespace tallyglass {

namespace {

/// The least memory that a read is given, and the initial size of a stream's buffer.
constexpr std::size_t readSize = std::size_t{64} << 10;
/// The most that one read takes: it wakes the child, which should write while we read the rest.
constexpr std::size_t longestRead = std::size_t{512} << 10;
/// The capacity of the standard output pipe, so that the child can keep writing while we are busy.
constexpr int pipeCapacity = 1 << 20;

/// Wraps a descriptor that a system call returned. Throws LaunchError for -1.
FileDescriptor opened(int number) {
    if (number < 0)
        throw ChildProcess::LaunchError(errorText());
    return FileDescriptor(number);
}

/// One output stream: the read end of a pipe and the bytes read from it.
class Stream {
public:
    /// Creates the pipe and stores its write end in `writeEnd`.
    explicit Stream(FileDescriptor& writeEnd) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw ChildProcess::LaunchError(errorText());
        m_readEnd = FileDescriptor(ends[0]);
        writeEnd = FileDescriptor(ends[1]);
        if (writeEnd.fd() <=
            STDERR_FILENO) // where the child's streams will be duplicated to, one after the other
            writeEnd = opened(fcntl(writeEnd.fd(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }

    void widen() const { fcntl(m_readEnd.fd(), F_SETPIPE_SZ, pipeCapacity); } // best effort

    [[nodiscard]] bool isOpen() const { return m_readEnd.isOpen(); }
    [[nodiscard]] pollfd request() const { return {m_readEnd.fd(), POLLIN, 0}; }

    /// Reads the available bytes. Requires: poll() has reported the stream. Returns whether there were any.
    bool read() {
        const auto space = room();
        const auto count = ::read(m_readEnd.fd(), space.data(), std::min(space.size(), longestRead));
        if (count > 0)
            m_bytes.commit(static_cast<std::size_t>(count));
        else if (count == 0)
            m_readEnd.close();
        else if (errno != EINTR)
            throw ChildProcess::OutputError(errorText());
        return count > 0;
    }
    void drop() { m_bytes.clear(); }

    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
    ByteBuffer take() {
        m_bytes.shrinkToFit();
        return std::move(m_bytes);
    }

private:
    [[nodiscard]] std::span<char> room() try { return m_bytes.tail(readSize); } catch (const Error& failure) {
        throw ChildProcess::OutputError(failure.errorDescription());
    }

    FileDescriptor m_readEnd;
    ByteBuffer m_bytes;
};

/// The attributes and file actions with which the child is spawned.
class SpawnSettings {
public:
    SpawnSettings(const FileDescriptor& output, const FileDescriptor& errors) {
        check(posix_spawn_file_actions_init(&m_actions));
        check(posix_spawnattr_init(&m_attributes));
        check(posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, _PATH_DEVNULL, O_RDONLY, 0));
        check(posix_spawn_file_actions_adddup2(&m_actions, output.fd(), STDOUT_FILENO));
        check(posix_spawn_file_actions_adddup2(&m_actions, errors.fd(), STDERR_FILENO));
        check(posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1));
        sigset_t signals;
        sigemptyset(&signals);
        check(posix_spawnattr_setsigmask(&m_attributes, &signals));
        sigfillset(&signals);
        check(posix_spawnattr_setsigdefault(&m_attributes, &signals));
        // In a group of its own: Ctrl-C at a terminal reaches this program alone, which then stops the child.
        check(posix_spawnattr_setpgroup(&m_attributes, 0));
        check(posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                          POSIX_SPAWN_SETPGROUP));
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }

    [[nodiscard]] pid_t spawn(const std::string& executable,
                              const std::vector<std::string>& arguments) const {
        std::vector<char*> argv;
        const auto add = [&](const std::string& argument) {
            check(argument.find('\0') == std::string::npos ? 0 : EINVAL); // it would be truncated there
            argv.push_back(const_cast<char*>(argument.c_str()));          // the interface isn't const-correct
        };
        argv.reserve(arguments.size() + 2);
        add(executable);
        std::ranges::for_each(arguments, add);
        argv.push_back(nullptr);
        pid_t pid = 0;
        check(posix_spawn(&pid, executable.c_str(), &m_actions, &m_attributes, argv.data(), environ));
        return pid;
    }

private:
    static void check(int error) {
        if (error != 0)
            throw ChildProcess::LaunchError(errorText(error));
    }

    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

/// A launched child. The destructor kills it if it is still running.
class Child {
public:
    explicit Child(pid_t pid) : m_descriptor(pidfd_open(pid, 0)) {
        if (m_descriptor.isOpen()) {
            m_killing.emplace(killing().get_token(), Kill{this});
            return;
        }
        const int error = errno;
        kill(pid, SIGKILL); // still ours: nobody else waits for it
        waitpid(pid, nullptr, 0);
        throw ChildProcess::LaunchError(errorText(error));
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (isRunning()) {
            signal(SIGKILL);
            siginfo_t ignored;
            wait(ignored);
        }
    }

    [[nodiscard]] bool isRunning() const { return m_descriptor.isOpen(); }
    [[nodiscard]] pollfd request() const { return {m_descriptor.fd(), POLLIN, 0}; }
    /// Does nothing if the child has ended.
    void signal(int number) const { pidfd_send_signal(m_descriptor.fd(), number, nullptr, 0); }

    /// Reaps the child. Requires: poll() has reported its end.
    void reap() {
        siginfo_t end{};
        const int error = wait(end);
        m_killing.reset(); // it may be using the descriptor
        m_descriptor.close();
        if (error != 0)
            throw ChildProcess::OutputError(errorText(error)); // another part of the program has reaped it
        if (end.si_code == CLD_EXITED)
            m_end = ChildProcess::Exited{end.si_status};
        else
            m_end = ChildProcess::Signalled{end.si_status};
    }
    [[nodiscard]] const std::variant<ChildProcess::Exited, ChildProcess::Signalled>& end() const {
        return m_end;
    }

    /// Stopped when all children are to be killed.
    static std::stop_source& killing() {
        static std::stop_source source;
        return source;
    }

private:
    struct Kill {
        const Child* child;
        void operator()() const { child->signal(SIGKILL); }
    };

    int wait(siginfo_t& end) const {
        while (waitid(P_PIDFD, static_cast<id_t>(m_descriptor.fd()), &end, WEXITED) != 0)
            if (errno != EINTR)
                return errno;
        return 0;
    }

    FileDescriptor m_descriptor;
    std::optional<std::stop_callback<Kill>> m_killing; // declared after the descriptor, so destroyed first
    std::variant<ChildProcess::Exited, ChildProcess::Signalled> m_end;
};

/// Passes a stop from the requesting thread to the poll, and then times the delay before SIGKILL.
class StopRequest {
public:
    /// A token that can't be stopped costs nothing.
    explicit StopRequest(const std::stop_token& stop) {
        if (!stop.stop_possible())
            return;
        m_event = opened(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
        m_timer = opened(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    }

    void signal() const { eventfd_write(m_event.fd(), 1); }
    [[nodiscard]] pollfd request() const { return {m_event.fd(), POLLIN, 0}; }
    [[nodiscard]] pollfd timerRequest() const { return {m_timer.fd(), POLLIN, 0}; }

    /// Clears the event that poll() has reported and starts the timer.
    void startTimer(std::chrono::milliseconds delay) const {
        clear(m_event);
        const auto seconds = std::chrono::floor<std::chrono::seconds>(delay);
        itimerspec times{};
        times.it_value.tv_sec = seconds.count();
        times.it_value.tv_nsec = std::chrono::nanoseconds(delay - seconds).count();
        if (delay <= delay.zero())
            times.it_value = {0, 1}; // zero would disarm it
        timerfd_settime(m_timer.fd(), 0, &times, nullptr);
    }
    /// Clears the timer's expiration, which poll() would keep reporting.
    void clearTimer() const { clear(m_timer); }

private:
    static void clear(const FileDescriptor& event) {
        eventfd_t ignored = 0;
        eventfd_read(event.fd(), &ignored);
    }

    FileDescriptor m_event;
    FileDescriptor m_timer;
};

/// Makes the kernel keep the exit status of children, which it discards in a program that was started with
/// SIGCHLD ignored; a pid could then be reused at once.
void keepChildStatus() {
    struct sigaction action {};
    sigaction(SIGCHLD, nullptr, &action);
    if (action.sa_handler != SIG_IGN && !(action.sa_flags & SA_NOCLDWAIT))
        return;
    if (action.sa_handler == SIG_IGN)
        action.sa_handler = SIG_DFL;
    action.sa_flags &= ~SA_NOCLDWAIT;
    sigaction(SIGCHLD, &action, nullptr);
}

} // namespace

ChildProcess::Result ChildProcess::run(std::stop_token stop) const {
    keepChildStatus();
    FileDescriptor outputEnd;
    FileDescriptor errorsEnd;
    Stream outputStream(outputEnd);
    Stream errorStream(errorsEnd);
    outputStream.widen();
    StopRequest stopRequest(stop);
    Child child(SpawnSettings(outputEnd, errorsEnd).spawn(executable, arguments));
    outputEnd.close(); // else the streams would never end
    errorsEnd.close();
    const std::stop_callback onStop(stop, [&] { stopRequest.signal(); });

    bool isStopping = false;
    while (child.isRunning() || (!isStopping && (outputStream.isOpen() || errorStream.isOpen()))) {
        std::array requests = {outputStream.request(), errorStream.request(), child.request(),
                               stopRequest.request(), stopRequest.timerRequest()};
        if (poll(requests.data(), requests.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            throw OutputError(errorText());
        }
        const auto& [output, errors, end, stopped, killTime] = requests;
        if (stopped.revents) {
            isStopping = true;
            child.signal(SIGTERM);
            stopRequest.startTimer(killAfter);
        }
        if (killTime.revents) {
            child.signal(SIGKILL);
            stopRequest.clearTimer();
        }
        if (isStopping) { // the output is discarded, but the child may block until it is read
            outputStream.drop();
            errorStream.drop();
        }
        if (output.revents && outputStream.read() && onOutput && !isStopping)
            onOutput(outputStream.size());
        if (errors.revents)
            errorStream.read();
        if (end.revents)
            child.reap();
    }
    if (stop.stop_requested())
        throw Cancelled();
    return {child.end(), outputStream.take(), errorStream.take()};
}

void ChildProcess::killAll() {
    Child::killing().request_stop();
}

} // namespace tallyglass
