// Tells whether paths are left out of backups and why, and changes an item's own exclusion. The system can't
// list what is excluded, so it only answers for paths that it is asked about.
//
// Immutable and cheap to copy; thread-safe. Operations that run tmutil block; a stop throws Cancelled.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Insight/ExclusionStatus.h"

#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyglass {

class ExclusionManager {
public:
    static constexpr std::string_view excludeAttribute = "com.apple.metadata:com_apple_backup_excludeItem";

    explicit ExclusionManager(TMUtilRunner runner) : m_runner(std::move(runner)) {}

    /// One status per path, in their order. `skipPaths` are those of the settings. One run of tmutil, none
    /// for no paths. Doesn't fail: what tmutil doesn't tell is unknown.
    [[nodiscard]] std::vector<ExclusionStatus> status(std::span<const std::string> paths,
                                                      std::span<const std::string> skipPaths,
                                                      const std::stop_token& stop = {}) const;

    /// Whether the item has the exclusion attribute, whatever its value. Links aren't followed.
    [[nodiscard]] static bool hasOwnMarker(const std::string& path);

    // These set and clear the marker. They throw TMUtilError.
    void exclude(const std::string& path, const std::stop_token& stop = {}) const;
    void include(const std::string& path, const std::stop_token& stop = {}) const;

private:
    TMUtilRunner m_runner;
};

} // namespace tallyglass
