// The machine of a made-up session as values, before anything is written. Values; any thread.

#pragma once

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupRate.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Platform/Date.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct FixtureMachine {
    TMSettings settings; ///< at first without a destination
    std::vector<BackupManifestEntry> manifest;
    bool hasHelper = false; ///< which exports the manifest
    BackupStatus status;
    std::optional<BackupRate> rate;
    FDAStatus access = FDAStatus::granted;
    std::optional<std::string> statusFailure; ///< what "tmutil status" fails with
    std::optional<std::string> stopFailure;   ///< what "tmutil stopbackup" fails with
    std::optional<std::string> infoFailure;   ///< what "tmutil destinationinfo" fails with

    [[nodiscard]] static std::span<const std::string_view> names();
    /// Absent for a name that isn't among those.
    [[nodiscard]] static std::optional<FixtureMachine> make(std::string_view name, Date now);
};

/// How a tmutil answers one of its verbs: with output, with a failure, or not before it is told to terminate.
struct FixtureAnswer {
    std::string output = {};
    std::string failure = {};
    bool isWaiting = false;
    std::int64_t bytesBeforeWait = 0;            ///< of output
    std::chrono::milliseconds timePerProperty{}; ///< that a comparison takes
};

/// The backups of a session and what comparing them gives.
struct FixtureComparisons {
    FixtureAnswer listing;
    FixtureAnswer latest;  ///< backup
    FixtureAnswer backups; ///< compared on the compare screen
    /// The same by the age of the newer backup, 0 being the newest, where they differ.
    std::map<std::size_t, FixtureAnswer> exceptions = {};
    double secondsEach = 0; ///< that comparing two backups takes
    FixtureAnswer changes;  ///< in one backup

    /// `newest` is the date of the newest backup; there is one a day.
    [[nodiscard]] static FixtureComparisons make(std::string_view name, Date newest);
};

} // namespace tallyglass
