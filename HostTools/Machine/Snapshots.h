// The backups in a destination's folder, and the manifest beside them that keeps each one's figures. A backup
// stands at <stamp>.backup/<stamp>.backup, the stamp being its completion in local time; whatever has another
// name, such as a backup in the making, isn't one.
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

/// What the manifest says of one backup.
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
    Date date; ///< the manifest's, which tells the two equal hours of autumn apart, or else the stamp's
    std::filesystem::path path; ///< what holds the volumes

    bool operator==(const Snapshot&) const = default;
};

struct Snapshots {
    static constexpr auto manifestName = "backup_manifest.plist";

    /// The whole backups in `folder`, oldest first.
    [[nodiscard]] static std::vector<Snapshot> list(const std::filesystem::path& folder);

    /// The place of the backup with that stamp, whether it exists or not.
    [[nodiscard]] static std::filesystem::path place(const std::filesystem::path& folder,
                                                     const std::string& stamp);

    /// The records of the manifest in `folder`, in its order; none without one.
    [[nodiscard]] static std::vector<ManifestRecord> manifest(const std::filesystem::path& folder);

    /// Adds a record, and settles the size unique to the backup before it, which is known only now.
    static void record(const std::filesystem::path& folder, const ManifestRecord& record,
                       std::optional<std::int64_t> uniqueSizeOfPrevious, Durability durability);
};

} // namespace tallyglass
