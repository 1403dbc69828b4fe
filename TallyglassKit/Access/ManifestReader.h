// Finds the backup manifest and reads it: first the copy that the privileged helper exports, whatever its
// age, then the file in the machine directory, which needs Full Disk Access.
//
// Immutable; any thread may use one object at any time. Reading blocks.

#pragma once

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class ManifestReader {
public:
    /// The system path of the helper's copy.
    static constexpr std::string_view exportPath =
        "/Library/Application Support/Tallyglass/backup_manifest.plist";

    explicit ManifestReader(TMUtilRunner runner, const SystemPaths& paths = SystemPaths::standard());

    [[nodiscard]] const TMUtilRunner& runner() const { return m_runner; }
    /// The file of the export copy on this system.
    [[nodiscard]] const std::string& exportURL() const { return m_exportURL; }

    /// Throws BackupManifestError, also for an invalid export copy. Throws Cancelled when stopped.
    [[nodiscard]] std::vector<BackupManifestEntry> read(std::stop_token stop = {}) const;

    /// Reads the export copy alone. Throws FileError if it is missing or unreadable, and BackupManifestError
    /// if it is invalid.
    [[nodiscard]] std::vector<BackupManifestEntry> readExport(std::stop_token stop = {}) const;

    /// The folder that "tmutil machinedirectory" names; absent after any failure or a stop.
    [[nodiscard]] std::optional<std::string> machineDirectory(std::stop_token stop = {}) const;

    /// Whether there is an export copy that this process may read.
    [[nodiscard]] bool isHelperInstalled() const;

private:
    TMUtilRunner m_runner;
    std::string m_exportURL;
};

} // namespace tallyglass
