#include "CommandLine/Commands/ModelJSON.h"

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Comparison/DirectoryRollup.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Platform/Timestamps.h"

namespace tallyglass::commandline {

JSON toJSON(Date date) {
    return toJSON(formatIso8601(date));
}

JSON toJSON(const BackupStatus& status) {
    return {{"isRunning", status.isRunning},
            {"percent", toJSON(status.percent)},
            {"phase", toJSON(status.phase)},
            {"bytesCopied", toJSON(status.bytesCopied)},
            {"totalBytes", toJSON(status.totalBytes)},
            {"filesCopied", toJSON(status.filesCopied)},
            {"totalFiles", toJSON(status.totalFiles)},
            {"timeRemaining", toJSON(status.timeRemaining)},
            {"numberOfChangedItems", toJSON(status.numberOfChangedItems)},
            {"isStopping", status.isStopping}};
}

JSON toJSON(const TMDestination& destination) {
    return {{"id", destination.id},
            {"destinationUUID", toJSON(destination.destinationUUID)},
            {"volumeName", toJSON(destination.volumeName)},
            {"networkURL", toJSON(destination.networkURL)},
            {"kind", rawValue(destination.kind)},
            {"bytesUsed", toJSON(destination.bytesUsed)},
            {"bytesAvailable", toJSON(destination.bytesAvailable)},
            {"isEncrypted", toJSON(destination.isEncrypted)},
            {"filesystemTypeName", toJSON(destination.filesystemTypeName)},
            {"consistencyScanDate", toJSON(destination.consistencyScanDate)},
            {"snapshotDates", toJSONArray(destination.snapshotDates)},
            {"attemptDates", toJSONArray(destination.attemptDates)},
            {"lastResult", toJSON(destination.lastResult)},
            {"displayName", destination.displayName()},
            {"totalBytes", toJSON(destination.totalBytes())},
            {"usedFraction", toJSON(destination.usedFraction())},
            {"latestSnapshot", toJSON(destination.latestSnapshot())}};
}

JSON toJSON(const BackupHealth& health) {
    JSON gaps = JSON::array();
    for (const auto& gap : health.gaps)
        gaps.push_back(
            {{"start", toJSON(gap.start)}, {"end", toJSON(gap.end)}, {"duration", gap.duration()}});
    return {{"level", rawValue(health.level())},
            {"summary", health.summary()},
            {"suspectedFailedAttempts", toJSONArray(health.suspectedFailedAttempts)},
            {"gaps", gaps},
            {"timeSinceLastBackup", toJSON(health.timeSinceLastBackup)},
            {"medianInterval", toJSON(health.medianInterval)},
            {"usedFraction", toJSON(health.usedFraction)},
            {"lastBackupResult", toJSON(health.lastBackupResult)},
            {"lastBackupFailed", health.lastBackupFailed()},
            {"lastBackupWasDeferred", health.lastBackupWasDeferred()},
            {"lastBackupReason", toJSON(health.lastBackupReason())}};
}

JSON toJSON(const TMSettings& settings) {
    return {{"autoBackupEnabled", settings.autoBackupEnabled},
            {"autoBackupInterval", toJSON(settings.autoBackupInterval)},
            {"requiresACPower", settings.requiresACPower},
            {"skipPaths", settings.skipPaths},
            {"destinations", toJSONArray(settings.destinations)}};
}

JSON toJSON(const BackupManifestEntry& entry) {
    return {
        {"completionDate", toJSON(entry.completionDate)}, {"startDate", toJSON(entry.startDate)},
        {"duration", toJSON(entry.duration())},           {"changedCount", entry.changedCount},
        {"changedLogicalSize", entry.changedLogicalSize}, {"changedPhysicalSize", entry.changedPhysicalSize},
        {"uniqueSize", toJSON(entry.uniqueSize)},         {"xid", toJSON(entry.xid)},
        {"isInitialBackup", entry.isInitialBackup}};
}

JSON toJSON(const Comparison& comparison) {
    return {{"id", comparison.id},
            {"fromPath", comparison.fromPath},
            {"toPath", comparison.toPath},
            {"fromDate", toJSON(comparison.fromDate)},
            {"toDate", toJSON(comparison.toDate)},
            {"depth", comparison.depth},
            {"startedAt", toJSON(comparison.startedAt)},
            {"completedAt", toJSON(comparison.completedAt)},
            {"isPartial", comparison.isPartial},
            {"errorMessage", toJSON(comparison.errorMessage)},
            {"addedCount", comparison.addedCount},
            {"removedCount", comparison.removedCount},
            {"modifiedCount", comparison.modifiedCount},
            {"bytesAdded", comparison.bytesAdded},
            {"bytesRemoved", comparison.bytesRemoved},
            {"netBytesFormatted", comparison.netBytesFormatted()}};
}

JSON toJSON(const ChangeRecord& change) {
    return {{"id", toJSON(change.id)},
            {"comparisonID", change.comparisonID.string()},
            {"path", change.path},
            {"kind", rawValue(change.kind)},
            {"isDirectory", change.isDirectory},
            {"size", toJSON(change.size)},
            {"sizeDelta", toJSON(change.sizeDelta)},
            {"parentPath", change.parentPath()},
            {"differences", change.differences ? JSON(change.differences->string()) : JSON(nullptr)}};
}

JSON toJSON(const DirectoryRollup& rollup) {
    return {{"path", rollup.path}, {"changeCount", rollup.changeCount}, {"bytesDelta", rollup.bytesDelta}};
}

} // namespace tallyglass::commandline
