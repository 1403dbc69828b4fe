// Fault injection below the file functions: counts the system calls that change files, and at the chosen one
// the call fails or the process dies. The calls are replaced for the whole test program, by defining the C
// library's functions; without an object of this class they do what they always do.
//
// One at a time, one thread; the destructor removes the fault.

#pragma once

namespace tallyglass::test {

class FaultyFiles {
public:
    /// The call after `callsBefore` fails with `error`; the process dies there if that is 0. Calls that
    /// remove items never fail.
    FaultyFiles(int callsBefore, int error);
    ~FaultyFiles();
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;
};

/// A file system that only knows a plain rename, while an object of this class lives.
class PlainRename {
public:
    PlainRename();
    ~PlainRename();
    PlainRename(const PlainRename&) = delete;
    PlainRename& operator=(const PlainRename&) = delete;
};

} // namespace tallyglass::test
