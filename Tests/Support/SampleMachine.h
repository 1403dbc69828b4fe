// A small sample machine for tests: 8 backups of 200 files with a failure and a deferral in their history,
// made by running the program once per test process. Tests must leave it as it is; one that changes a machine
// makes its own.

#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tallyglass::test {

class SampleMachine {
public:
    static constexpr std::size_t backupCount = 8; ///< of the shared machine
    /// The machine's current date.
    static constexpr auto now = "2026-11-22T12:00:00Z";
    static constexpr auto volumeName = "Macintosh HD - Data";

    /// Made on first use, removed at the end of the process. Throws when it can't be made.
    [[nodiscard]] static const SampleMachine& shared();

    /// A separate one, made with these options of the program, such as "--backups", "3".
    explicit SampleMachine(const std::vector<std::string>& options);

    /// The machine's root: what TALLYGLASS_ROOT names.
    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }
    /// The tmutil that serves this machine, wherever TALLYGLASS_ROOT points.
    [[nodiscard]] std::string tool() const { return m_root / "usr/bin/tmutil"; }
    /// The user's folder, which the backups hold as "/Users/alex" on the volume `volumeName`.
    [[nodiscard]] std::filesystem::path home() const { return m_root / "Users/alex"; }
    /// The backups' roots, oldest first.
    [[nodiscard]] const std::vector<std::string>& backups() const { return m_backups; }

private:
    TemporaryFolder m_folder;
    std::filesystem::path m_root;
    std::vector<std::string> m_backups;
};

} // namespace tallyglass::test
