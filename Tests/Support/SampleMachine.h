// A small sample machine, made once in a test process by the real program and removed at its end.

#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>

namespace tallyglass::test {

class SampleMachine {
public:
    static constexpr std::size_t backupCount = 8;

    /// The one of this process. Tests that change it make their own.
    [[nodiscard]] static const SampleMachine& shared();

    SampleMachine();

    [[nodiscard]] std::filesystem::path root() const { return m_folder / "root"; }

private:
    TemporaryFolder m_folder;
};

} // namespace tallyglass::test
