// A destination of Time Machine backups, with its history as recorded in the preferences. Identified by `id`.
// A value; made field by field: TMDestination{.id = "A", .snapshotDates = {first, second}}.

#pragma once

#include "TallyglassKit/Access/Internal/AscendingDates.h"
#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/RawValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

struct TMDestination {
    enum class Kind : std::uint8_t { network, local, unknown };

    std::string id = {};
    std::optional<std::string> destinationUUID = {}; ///< part of the mount path of its backups
    std::optional<std::string> volumeName = {};      ///< last known
    std::optional<std::string> networkURL = {};
    Kind kind = Kind::unknown;
    std::optional<std::int64_t> bytesUsed = {};
    std::optional<std::int64_t> bytesAvailable = {};
    std::optional<bool> isEncrypted = {}; ///< last known
    std::optional<std::string> filesystemTypeName = {};
    std::optional<Date> consistencyScanDate = {}; ///< of the last scan
    AscendingDates snapshotDates = {};            ///< of completed backups
    AscendingDates attemptDates = {};
    std::optional<std::int64_t> lastResult = {}; ///< code of the last backup

    /// The volume's name, else the host of the URL, else "Backup Destination".
    [[nodiscard]] std::string displayName() const;
    /// Total bytes. Absent unless both counts are known and the sum fits.
    [[nodiscard]] std::optional<std::int64_t> totalBytes() const;
    /// The used part of the total, 0 to 1. Absent also if the total is less than one byte.
    [[nodiscard]] std::optional<double> usedFraction() const;
    [[nodiscard]] std::optional<Date> latestSnapshot() const;

    friend bool operator==(const TMDestination&, const TMDestination&) = default;
};

[[nodiscard]] std::string_view rawValue(TMDestination::Kind kind);
template <>
[[nodiscard]] std::optional<TMDestination::Kind> fromRawValue<TMDestination::Kind>(std::string_view raw);

} // namespace tallyglass
