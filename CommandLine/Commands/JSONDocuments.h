// The documents that tally prints with --json. Field names are those of the data models, absent values are
// null, dates are ISO 8601 in UTC with milliseconds. Lists of any kind are arrays.

#pragma once

#include "CommandLine/Commands/CompareBackups.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Insight/FileVersion.h"
#include "TallyglassKit/Insight/StorageTree.h"
#include "TallyglassKit/Platform/Files/FileCopy.h"

#include <algorithm>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass {
struct BackupManifestEntry;
struct BackupStatus;
struct BenchmarkResult;
struct ChangeExplanation;
struct ChangeRecord;
struct DiagnosticsDump;
struct DirectoryRollup;
struct ExclusionStatus;
struct TreemapTile;
} // namespace tallyglass

namespace tallyglass::commandline {

struct DestinationHealth {
    TMDestination destination;
    BackupHealth health;
};

/// The history of one path.
struct FileHistory {
    std::string path;
    std::vector<FileVersion> versions;  ///< in the order of the backups
    std::vector<FileVersionSpan> spans; ///< newest first

    [[nodiscard]] std::int64_t probedCount() const { return static_cast<std::int64_t>(versions.size()); }
    [[nodiscard]] std::int64_t missingCount() const {
        return std::ranges::count(versions, false, &FileVersion::exists);
    }
};

struct Export {
    FileVersion version;
    std::string destination;
    CopyProgress progress; ///< at its end
};

/// The status, with the access and a summary of each destination.
void printStatusJSON(std::ostream& out, const BackupStatus& status, FDAStatus access,
                     std::span<const DestinationHealth> healths);

void printJSON(std::ostream& out, const std::optional<TMSettings>& settings);
void printJSON(std::ostream& out, std::span<const DestinationHealth> healths);
void printJSON(std::ostream& out, std::span<const DiffEngine::Backup> backups);
void printJSON(std::ostream& out, std::span<const BackupManifestEntry> entries);
void printJSON(std::ostream& out, std::span<const Comparison> comparisons);
void printJSON(std::ostream& out, std::span<const ChangeRecord> changes);
void printJSON(std::ostream& out, std::span<const DirectoryRollup> rollups);
void printJSON(std::ostream& out, std::span<const std::pair<Comparison, ChangeRecord>> history);
void printJSON(std::ostream& out, const ComparisonResult& result, std::span<const ChangeRecord> changes);
void printJSON(std::ostream& out, const FileHistory& history);
void printJSON(std::ostream& out, const Export& done);
void printJSON(std::ostream& out, std::span<const ExclusionStatus> statuses);
void printJSON(std::ostream& out, const DiagnosticsDump& dump);
void printJSON(std::ostream& out, std::span<const BenchmarkResult> results);
void printJSON(std::ostream& out, const Comparison& comparison, const ChangeExplanation& explanation);
void printJSON(std::ostream& out, std::span<const TreemapTile> tiles);

void printOverviewJSON(std::ostream& out, const BackupStatus& status,
                       const std::optional<TMSettings>& settings, std::span<const DiffEngine::Backup> latest,
                       const std::optional<ComparisonResult>& result,
                       const std::optional<ChangeExplanation>& explanation,
                       std::span<const ChangeRecord> biggest);

void printMapJSON(std::ostream& out, const Comparison& comparison, const StorageTree::Node& folder,
                  std::span<const StorageTree::Node> children, std::int64_t unsizedChildCount,
                  std::span<const StorageTree::Node> breadcrumb);

void printExportedChangesJSON(std::ostream& out, const Comparison& comparison, const std::string& file,
                              std::int64_t rowCount);

} // namespace tallyglass::commandline
