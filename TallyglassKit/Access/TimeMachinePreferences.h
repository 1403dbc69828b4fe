// Reads Time Machine's settings and the history of each destination from the system's preferences, which need
// no permission.
//
// A value; any thread.

#pragma once

#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

struct TimeMachinePreferences {
    static constexpr std::string_view timeMachineSuite = "com.apple.TimeMachine";

    /// The preference domain to read.
    std::string suiteName{timeMachineSuite};

    /// Reads the domain. Absent if it has neither a destination nor "AutoBackup". A value of the wrong type
    /// makes its field absent; a destination without an identifier is omitted.
    [[nodiscard]] std::optional<TMSettings> read(const SystemPaths& paths = SystemPaths::standard()) const;

    friend bool operator==(const TimeMachinePreferences&, const TimeMachinePreferences&) = default;
};

} // namespace tallyglass
