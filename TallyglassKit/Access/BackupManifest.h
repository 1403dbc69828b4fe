// Time Machine's record of a machine's backups: when each started and ended and how much it changed.
//
// The file is a property list in any form. Its root is an array in which dates and dictionaries alternate;
// each such pair is one backup, and the date is its completion.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Error.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// One backup. A value, identified by its completion.
struct BackupManifestEntry {
    Date completionDate;
    std::optional<Date> startDate = {};
    std::int64_t changedCount = 0;               ///< items
    std::int64_t changedLogicalSize = 0;         ///< bytes
    std::int64_t changedPhysicalSize = 0;        ///< bytes
    std::optional<std::int64_t> uniqueSize = {}; ///< bytes that no other backup holds
    std::optional<std::int64_t> xid = {};        ///< transaction of the backup
    bool isInitialBackup = false;                ///< the first one, which copies everything

    /// The completion in seconds since 1970.
    [[nodiscard]] double id() const { return secondsSince1970(completionDate); }
    /// Seconds from start to completion.
    [[nodiscard]] std::optional<double> duration() const;

    friend bool operator==(const BackupManifestEntry&, const BackupManifestEntry&) = default;
};

/// Why there is no manifest, with a message for the user. Immutable; any thread may read it.
class BackupManifestError : public Error {
public:
    enum class Case { unreadable, machineDirectoryUnavailable };

    [[nodiscard]] static BackupManifestError unreadable(std::string_view text);
    [[nodiscard]] static BackupManifestError machineDirectoryUnavailable();

    [[nodiscard]] Case value() const { return m_value; }

private:
    BackupManifestError(Case value, const std::string& description) : Error(description), m_value(value) {}

    Case m_value;
};

struct BackupManifest {
    static constexpr std::string_view fileName = "backup_manifest.plist";

    /// The entries in ascending order of completion; equal ones are in the file's order. Pairs that aren't a
    /// date and a dictionary are omitted. Throws BackupManifestError if the bytes can't be parsed as a
    /// property list with an array at its root.
    [[nodiscard]] static std::vector<BackupManifestEntry> parse(std::string_view data);
};

} // namespace tallyglass
