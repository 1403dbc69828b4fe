#include "CommandLine/Commands/JSONDocuments.h"

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Comparison/DirectoryRollup.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Insight/ChangeExplanation.h"
#include "TallyglassKit/Insight/CompareBenchmark.h"
#include "TallyglassKit/Insight/DiagnosticsDump.h"
#include "TallyglassKit/Insight/ExclusionStatus.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Insight/Treemap.h"
#include "TallyglassKit/Platform/Text/Timestamps.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace tallyglass::commandline {

namespace {

using JSON = nlohmann::ordered_json;

// Declared for the templates, which look them up at their definition.
JSON toJSON(Date date);
JSON toJSON(const TMDestination& destination);
JSON toJSON(const TMSettings& settings);
JSON toJSON(const BackupManifestEntry& entry);
JSON toJSON(const Comparison& comparison);
JSON toJSON(const ChangeRecord& change);
JSON toJSON(const DirectoryRollup& rollup);
JSON toJSON(const DiffEngine::Backup& backup);
JSON toJSON(const DestinationHealth& health);
JSON toJSON(const std::pair<Comparison, ChangeRecord>& event);
JSON toJSON(const FileVersion& version);
JSON toJSON(const FileVersionSpan& span);
JSON toJSON(const ExclusionStatus& status);
JSON toJSON(const DiagnosticsDump::Step& step);
JSON toJSON(const BenchmarkResult& result);
JSON toJSON(const StorageTree::Node& node);
JSON toJSON(const ChangeExplanation& explanation);
JSON toJSON(const ChangeExplanation::Place& place);
JSON toJSON(const TreemapTile& tile);

template <typename Value>
JSON toJSON(const std::optional<Value>& value) {
    if (!value)
        return nullptr;
    if constexpr (std::is_arithmetic_v<Value> || std::is_convertible_v<Value, std::string_view>)
        return *value;
    else
        return toJSON(*value);
}

template <typename Values>
JSON toJSONArray(const Values& values) {
    JSON array = JSON::array();
    for (const auto& value : values)
        array.push_back(toJSON(value));
    return array;
}

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

JSON toJSON(const DiffEngine::Backup& backup) {
    return {{"path", backup.path}, {"date", toJSON(backup.date)}};
}

JSON toJSON(const DestinationHealth& health) {
    JSON document{{"destination", health.destination.displayName()}, {"id", health.destination.id}};
    document.update(toJSON(health.health));
    return document;
}

JSON toJSON(const std::pair<Comparison, ChangeRecord>& event) {
    return {{"comparison", toJSON(event.first)}, {"change", toJSON(event.second)}};
}

JSON toJSON(const FileVersion& version) {
    return {{"backupRoot", version.backupRoot},
            {"backupDate", toJSON(version.backupDate)},
            {"path", version.path},
            {"exists", version.exists},
            {"size", toJSON(version.size)},
            {"modified", toJSON(version.modified)},
            {"inode", toJSON(version.inode)},
            {"isDirectory", version.isDirectory},
            {"fingerprint", version.fingerprint()}};
}

JSON toJSON(const FileVersionSpan& span) {
    return {{"firstSeen", toJSON(span.firstSeen())},
            {"lastSeen", toJSON(span.lastSeen())},
            {"backupCount", span.backupCount()},
            {"version", toJSON(span.version)}};
}

std::string_view nameOf(ExclusionReason reason) {
    switch (reason) {
    case ExclusionReason::ownMarker:
        return "ownMarker";
    case ExclusionReason::inherited:
        return "inherited";
    case ExclusionReason::systemSkipPath:
        break;
    }
    return "systemSkipPath";
}

JSON toJSON(const ExclusionStatus& status) {
    return {{"path", status.path},
            {"state", rawValue(status.state)},
            {"reason", status.reason ? JSON(nameOf(*status.reason)) : JSON(nullptr)},
            {"canToggle", status.canToggle()},
            {"explanation", status.explanation()}};
}

JSON toJSON(const DiagnosticsDump::Step& step) {
    return {{"id", step.id},
            {"label", step.label},
            {"arguments", step.arguments},
            {"exitCode", toJSON(step.exitCode)},
            {"byteCount", step.byteCount},
            {"error", toJSON(step.error)},
            {"succeeded", step.succeeded()}};
}

JSON toJSON(const BenchmarkResult& result) {
    return {{"label", result.label},
            {"arguments", result.arguments},
            {"seconds", result.seconds},
            {"secondsPerPair", result.secondsPerPair()},
            {"changeCount", toJSON(result.changeCount)},
            {"pairsUsed", result.pairsUsed},
            {"error", toJSON(result.error)},
            {"succeeded", result.succeeded()}};
}

JSON toJSON(const StorageTree::Node& node) {
    return {{"path", node.path},
            {"name", node.name},
            {"magnitude", node.magnitude},
            {"netBytes", node.netBytes},
            {"changeCount", node.changeCount},
            {"isFile", node.isFile}};
}

JSON toJSON(const ChangeExplanation::Place& place) {
    return {{"path", place.path},
            {"magnitude", place.magnitude},
            {"netBytes", place.netBytes},
            {"changeCount", place.changeCount},
            {"share", place.share}};
}

JSON toJSON(const ChangeExplanation& explanation) {
    return {{"sentence", explanation.sentence},
            {"magnitude", explanation.magnitude},
            {"netBytes", explanation.netBytes},
            {"changeCount", explanation.changeCount},
            {"places", toJSONArray(explanation.places)}};
}

JSON toJSON(const TreemapTile& tile) {
    return {
        {"id", tile.id},
        {"label", tile.label},
        {"value", tile.value},
        {"rect",
         {{"x", tile.rect.x}, {"y", tile.rect.y}, {"width", tile.rect.width}, {"height", tile.rect.height}}}};
}

void print(std::ostream& out, const JSON& document) {
    // File names needn't be valid UTF-8, JSON must be.
    out << document.dump(2, ' ', false, JSON::error_handler_t::replace) << "\n";
}

} // namespace

void printStatusJSON(std::ostream& out, const BackupStatus& status, FDAStatus access,
                     std::span<const DestinationHealth> healths) {
    JSON document = toJSON(status);
    document["access"] = rawValue(access);
    document["health"] = JSON::array();
    for (const auto& [destination, health] : healths)
        document["health"].push_back(
            {{"destination", destination.displayName()}, {"summary", health.summary()}});
    print(out, document);
}

void printJSON(std::ostream& out, const std::optional<TMSettings>& settings) {
    print(out, toJSON(settings));
}

void printJSON(std::ostream& out, std::span<const DestinationHealth> healths) {
    print(out, toJSONArray(healths));
}

void printJSON(std::ostream& out, std::span<const DiffEngine::Backup> backups) {
    print(out, toJSONArray(backups));
}

void printJSON(std::ostream& out, std::span<const BackupManifestEntry> entries) {
    print(out, toJSONArray(entries));
}

void printJSON(std::ostream& out, std::span<const Comparison> comparisons) {
    print(out, toJSONArray(comparisons));
}

void printJSON(std::ostream& out, std::span<const ChangeRecord> changes) {
    print(out, toJSONArray(changes));
}

void printJSON(std::ostream& out, std::span<const DirectoryRollup> rollups) {
    print(out, toJSONArray(rollups));
}

void printJSON(std::ostream& out, std::span<const std::pair<Comparison, ChangeRecord>> history) {
    print(out, toJSONArray(history));
}

void printJSON(std::ostream& out, const ComparisonResult& result, std::span<const ChangeRecord> changes) {
    print(out, {{"cached", result.cached},
                {"comparison", toJSON(result.comparison)},
                {"changes", toJSONArray(changes)}});
}

void printJSON(std::ostream& out, const FileHistory& history) {
    print(out, {{"path", history.path},
                {"probedCount", history.probedCount()},
                {"missingCount", history.missingCount()},
                {"versions", toJSONArray(history.versions)},
                {"spans", toJSONArray(history.spans)}});
}

void printJSON(std::ostream& out, const Export& done) {
    print(out, {{"version", toJSON(done.version)},
                {"destination", done.destination},
                {"items", done.progress.items},
                {"bytes", done.progress.bytes}});
}

void printJSON(std::ostream& out, std::span<const ExclusionStatus> statuses) {
    print(out, toJSONArray(statuses));
}

void printJSON(std::ostream& out, const DiagnosticsDump& dump) {
    print(out, {{"directory", dump.directory.string()},
                {"summary", dump.summary()},
                {"steps", toJSONArray(dump.steps)}});
}

void printJSON(std::ostream& out, std::span<const BenchmarkResult> results) {
    print(out, toJSONArray(results));
}

void printJSON(std::ostream& out, const Comparison& comparison, const ChangeExplanation& explanation) {
    print(out, {{"comparison", toJSON(comparison)}, {"explanation", toJSON(explanation)}});
}

void printJSON(std::ostream& out, std::span<const TreemapTile> tiles) {
    print(out, toJSONArray(tiles));
}

void printMapJSON(std::ostream& out, const Comparison& comparison, const StorageTree::Node& folder,
                  std::span<const StorageTree::Node> children, std::int64_t unsizedChildCount,
                  std::span<const StorageTree::Node> breadcrumb) {
    print(out, {{"comparison", toJSON(comparison)},
                {"folder", toJSON(folder)},
                {"children", toJSONArray(children)},
                {"unsizedChildCount", unsizedChildCount},
                {"breadcrumb", toJSONArray(breadcrumb)}});
}

void printExportedChangesJSON(std::ostream& out, const Comparison& comparison, const std::string& file,
                              std::int64_t rowCount) {
    print(out, {{"comparison", toJSON(comparison)}, {"file", file}, {"rowCount", rowCount}});
}

void printOverviewJSON(std::ostream& out, const BackupStatus& status,
                       const std::optional<TMSettings>& settings, std::span<const DiffEngine::Backup> latest,
                       const std::optional<ComparisonResult>& result,
                       const std::optional<ChangeExplanation>& explanation,
                       std::span<const ChangeRecord> biggest) {
    print(out, {{"status", toJSON(status)},
                {"settings", toJSON(settings)},
                {"backups", toJSONArray(latest)},
                {"comparison", result ? toJSON(result->comparison) : JSON(nullptr)},
                {"cached", result ? JSON(result->cached) : JSON(nullptr)},
                {"explanation", toJSON(explanation)},
                {"biggestChanges", toJSONArray(biggest)}});
}

} // namespace tallyglass::commandline
