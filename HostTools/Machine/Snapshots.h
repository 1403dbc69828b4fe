// The backups in a destination's folder, and the manifest beside them with their figures. A backup is at
// <stamp>.backup/<stamp>.backup, where the stamp is its completion in local time; other names, such as that
// of a backup in progress, are ignored.
//
// Values and static operations; any thread.

#pragma once

#include "HostTools/Machine/FileOperations.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// The manifest's record of one backup.
struct ManifestRecord {
    Date completion;
    Date start;
    std::int64_t changedCount = 0;
    std::int64_t changedLogicalSize = 0;
    std::int64_t changedPhysicalSize = 0;
    std::int64_t propagatedCount = 0; ///< items carried over unchanged
    std::int64_t uniqueSize = 0;

    bool operator==(const ManifestRecord&) const = default;
};

struct Snapshot {
    std::string stamp;
    Date date; ///< the manifest's, which is unambiguous when clocks go back, or else the stamp's
    std::filesystem::path path; ///< the folder of its volumes

    bool operator==(const Snapshot&) const = default;
};

struct Snapshots {
    static constexpr auto manifestName = "backup_manifest.plist";

    /// The complete backups in `folder`, oldest first.
    [[nodiscard]] static std::vector<Snapshot> list(const std::filesystem::path& folder);

    /// The path of the backup with that stamp, whether it exists or not.
    [[nodiscard]] static std::filesystem::path place(const std::filesystem::path& folder,
                                                     const std::string& stamp);

    /// The records of the manifest in `folder`, in its order; empty without a manifest.
    [[nodiscard]] static std::vector<ManifestRecord> manifest(const std::filesystem::path& folder);

    /// Adds a record, and updates the unique size of the previous backup, which is only known now.
    static void record(const std::filesystem::path& folder, const ManifestRecord& record,
                       std::optional<std::int64_t> uniqueSizeOfPrevious, Durability durability);
};

} // namespace tallyglass
