// Made-up sessions, for looking at every state of the screens without having a machine for it: the
// environment of an imagined machine, which the models read by their ordinary operations. The same name at
// the same present always gives the same machine.
//
// A value that lives on the main thread; its environment may be used as any other.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// What somebody does on the screens before they are looked at. Made without values, it is what is done on a
/// real machine.
struct ScreenActions {
    enum class Work : std::uint8_t { none, begin, finish };
    /// A load that never ends is at its place once this is shown.
    struct Standstill {
        std::string elapsed; ///< such as "1:15"
        bool hasReceived;    ///< output of tmutil
    };

    bool stopsBackup = false;
    bool liftsDepthLimit = true;
    Work comparing = Work::finish;
    std::vector<std::string> expandedFolders = {}; ///< of the changes in the newest backup, in this order
    std::optional<Standstill> changes = {};
    std::optional<std::string> tracedPath = {}; ///< else a file that the comparison found changed
    bool traces = true;
    bool tracesForever = false;  ///< the scan doesn't end
    bool comparesAll = false;    ///< all neighbouring backups, up to where that halts
    Work capturing = Work::none; ///< of diagnostics
    Work benchmarking = Work::none;
    bool togglesExclusion = false; ///< of the first watched item that can be toggled
};

struct FixtureSession {
    /// Time stands still in it: its timers fire at once until the time that the session is about has passed,
    /// and then not any more. Its files go with the last copy.
    AppEnvironment environment;
    ScreenActions actions;
    bool measuresRate; ///< a transfer rate will be there, after the second reading of the status

    /// What can be imagined, in the order to show: "healthy", "warning" and so on.
    [[nodiscard]] static std::span<const std::string_view> names();

    /// The session of this name, as seen at `now`; absent for a name that isn't among those. Throws
    /// std::exception if its files can't be written.
    [[nodiscard]] static std::optional<FixtureSession> make(std::string_view name, Date now);
};

} // namespace tallyglass
