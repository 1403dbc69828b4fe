#include "TallyglassKit/Comparison/ComparableBackups.h"

#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/SystemPaths.h"

namespace tallyglass {

std::vector<DiffEngine::Backup> ComparableBackups::reconstructed(const SystemPaths& paths,
                                                                 const ManifestReader& reader,
                                                                 const std::stop_token& stop) {
    const auto settings = TimeMachinePreferences().read(paths);
    if (!settings || settings->destinations.empty())
        return {};
    const auto& identifier = settings->destinations.front().destinationUUID;
    if (!identifier)
        return {};
    try {
        std::vector<DiffEngine::Backup> backups;
        for (const BackupManifestEntry& entry : reader.readExport(stop))
            backups.push_back({paths.path(BackupPath::reconstructRoot(*identifier, entry.completionDate)),
                               entry.completionDate});
        return backups;
    } catch (const Error&) {
        return {};
    }
}

ComparableBackups ComparableBackups::find(const SystemPaths& paths, const ManifestReader& reader,
                                          const DiffEngine* engine, const std::stop_token& stop) {
    ComparableBackups found{.backups = reconstructed(paths, reader, stop), .unavailableReason = {}};
    if (found.backups.empty() && engine)
        found.backups = engine->availableBackupsThrowing(stop);
    if (found.backups.empty())
        found.unavailableReason = BackupListing::message();
    return found;
}

} // namespace tallyglass
