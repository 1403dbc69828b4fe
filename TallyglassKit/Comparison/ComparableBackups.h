// The backups that a user can choose two of, or why there are none. A value; finding them blocks.

#pragma once

#include "TallyglassKit/Comparison/DiffEngine.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

class ManifestReader;
class SystemPaths;

struct ComparableBackups {
    std::vector<DiffEngine::Backup> backups; ///< oldest first
    std::optional<std::string> unavailableReason;

    /// Finds them in the helper's copy of the manifest, or else has tmutil list them, unless `engine` is
    /// null. Throws what the listing throws.
    [[nodiscard]] static ComparableBackups find(const SystemPaths& paths, const ManifestReader& reader,
                                                const DiffEngine* engine, const std::stop_token& stop = {});

    /// The backups of the first destination by the helper's copy of the manifest, which needs no permission.
    /// None if there is no such copy, or nothing in it.
    [[nodiscard]] static std::vector<DiffEngine::Backup>
    reconstructed(const SystemPaths& paths, const ManifestReader& reader, const std::stop_token& stop = {});
};

} // namespace tallyglass
