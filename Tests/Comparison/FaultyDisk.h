// Fault injection below SQLite: counts the calls that change files; from the chosen one on the disk is full,
// or at that one the process dies in the middle of a write.
//
// One at a time; the destructor removes the fault.

#pragma once

#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <limits>

namespace tallyglass::test {

class FaultyDisk {
public:
    enum class Fault { full, death };

    FaultyDisk(Fault fault, int callsBefore) {
        s_fault = fault;
        s_callsLeft = callsBefore;
        override("write", reinterpret_cast<sqlite3_syscall_ptr>(&writeSome));
        override("pwrite", reinterpret_cast<sqlite3_syscall_ptr>(&writeSomeAt));
        override("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(&writeSomeAt));
        override("ftruncate", reinterpret_cast<sqlite3_syscall_ptr>(&truncateFile));
        override("unlink", reinterpret_cast<sqlite3_syscall_ptr>(&unlinkFile));
    }
    ~FaultyDisk() {
        for (const char* call : {"write", "pwrite", "pwrite64", "ftruncate", "unlink"})
            override(call, nullptr);
    }
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;

    /// Whether the fault has occurred.
    [[nodiscard]] static bool hasFailed() { return s_callsLeft < 0; }

private:
    static void override(const char* call, sqlite3_syscall_ptr function) {
        sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
        vfs->xSetSystemCall(vfs, call, function);
    }

    static bool fails() {
        if (s_callsLeft > std::numeric_limits<int>::min())
            --s_callsLeft;
        return s_callsLeft < 0;
    }
    [[noreturn]] static void die() {
        kill(getpid(), SIGKILL);
        while (true)
            pause();
    }

    static ssize_t writeSome(int file, const void* bytes, std::size_t size) {
        if (!fails())
            return ::write(file, bytes, size);
        if (s_fault == Fault::death) {
            static_cast<void>(!::write(file, bytes, size / 2));
            die();
        }
        errno = ENOSPC;
        return -1;
    }
    static ssize_t writeSomeAt(int file, const void* bytes, std::size_t size, off_t offset) {
        if (!fails())
            return ::pwrite(file, bytes, size, offset);
        if (s_fault == Fault::death) {
            static_cast<void>(!::pwrite(file, bytes, size / 2, offset));
            die();
        }
        errno = ENOSPC;
        return -1;
    }
    static int truncateFile(int file, off_t size) {
        if (s_fault == Fault::death && fails())
            die();
        return ::ftruncate(file, size);
    }
    static int unlinkFile(const char* path) {
        if (s_fault == Fault::death && fails())
            die();
        return ::unlink(path);
    }

    static inline Fault s_fault = Fault::full;
    static inline int s_callsLeft = 0;
};

} // namespace tallyglass::test
