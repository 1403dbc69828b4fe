// The text output of tally.

#pragma once

#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Insight/StorageTree.h"

#include <cstddef>
#include <ostream>
#include <span>
#include <string>

namespace tallyglass {
struct BackupHealth;
struct BackupStatus;
struct ChangeRecord;
struct Comparison;
struct TMDestination;
} // namespace tallyglass

namespace tallyglass::commandline {

/// Such as "Idle" or "Running: Copying, 59 %, 831.4 MB of 1.81 TB, 457 of 10,159,895 files, 2m left".
[[nodiscard]] std::string describe(const BackupStatus& status);

/// Such as "Full Disk Access is granted".
[[nodiscard]] std::string describe(FDAStatus access);

/// Such as "Backups of mini: 41.2 MB of 50 MB used (82 %), 60 backups, latest Nov 22, 2026 at 7:38 PM".
[[nodiscard]] std::string describe(const TMDestination& destination);

/// Such as "mini: Backups healthy".
[[nodiscard]] std::string describe(const TMDestination& destination, const BackupHealth& health);

/// The date and the stamp of the backup, or its path if it has none.
[[nodiscard]] std::string describe(const DiffEngine::Backup& backup);

/// Such as "12 added, 3 removed, 40 modified, +1.2 MB in all".
[[nodiscard]] std::string describe(const Comparison& comparison);

/// The same, or why the comparison hasn't finished.
[[nodiscard]] std::string stateOf(const Comparison& comparison);

/// Such as "12.4 GB in 1,234 changes, +1.2 MB in all".
[[nodiscard]] std::string describe(const StorageTree::Node& node);

/// Padded by characters, not bytes: the minus sign and no-break spaces take several.
[[nodiscard]] std::string alignedRight(const std::string& text, std::size_t width);

/// Such as "2026-11-22-104514 → 2026-11-23-110917", for the paths of two backups or of folders in them.
[[nodiscard]] std::string describeOperands(const std::string& from, const std::string& to);

/// One line per change: its kind, signed size and path.
void printChanges(std::ostream& out, std::span<const ChangeRecord> changes);

} // namespace tallyglass::commandline
