// The temporary folder of a made-up machine, with the files that Time Machine keeps there. Any thread.

#pragma once

#include "TallyglassKit/Platform/SystemPaths.h"

#include <filesystem>
#include <string>

namespace tallyglass {

struct FixtureMachine;

class FixtureFiles {
public:
    /// Makes the folder and writes the files. Throws std::exception.
    explicit FixtureFiles(const FixtureMachine& machine);
    /// Removes the folder.
    ~FixtureFiles();
    FixtureFiles(const FixtureFiles&) = delete;
    FixtureFiles& operator=(const FixtureFiles&) = delete;

    [[nodiscard]] SystemPaths paths() const { return SystemPaths(m_root); }
    [[nodiscard]] std::filesystem::path cache() const { return m_root / "cache.sqlite"; }
    [[nodiscard]] std::filesystem::path defaults() const { return m_root / "defaults.json"; }
    [[nodiscard]] std::filesystem::path desktop() const { return m_root / "Users/alex/Desktop"; }
    /// What "tmutil machinedirectory" says; empty if it fails.
    [[nodiscard]] const std::string& machineDirectory() const { return m_machineDirectory; }

    /// Writes a file, with the folders above it. Throws std::exception.
    void write(const std::string& file, const std::string& contents) const;

private:
    std::filesystem::path m_root;
    std::string m_machineDirectory;
};

} // namespace tallyglass
