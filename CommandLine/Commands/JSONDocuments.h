// The documents that tally prints with --json. Field names are those of the data models, absent values are
// null, dates are ISO 8601 in UTC with milliseconds. Lists of any kind are arrays.

#pragma once

#include "CommandLine/Commands/CompareBackups.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Health/BackupHealth.h"

#include <iosfwd>
#include <optional>
#include <span>
#include <utility>

namespace tallyglass {
struct BackupManifestEntry;
struct BackupStatus;
struct ChangeRecord;
struct DirectoryRollup;
} // namespace tallyglass

namespace tallyglass::commandline {

struct DestinationHealth {
    TMDestination destination;
    BackupHealth health;
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

void printOverviewJSON(std::ostream& out, const BackupStatus& status,
                       const std::optional<TMSettings>& settings, std::span<const DiffEngine::Backup> latest,
                       const std::optional<ComparisonResult>& result, std::span<const ChangeRecord> biggest);

} // namespace tallyglass::commandline
