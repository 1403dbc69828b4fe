// Reads Time Machine's settings and the history of each destination from the system's preferences, which know
// them without any permission.
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

    /// Reads the domain as it is now. Absent if it holds nothing for Time Machine: neither a destination nor
    /// "AutoBackup". A value of a wrong type makes its one field absent; a destination without an identifier
    /// is left out.
    [[nodiscard]] std::optional<TMSettings> read(const SystemPaths& paths = SystemPaths::standard()) const;

    friend bool operator==(const TimeMachinePreferences&, const TimeMachinePreferences&) = default;
};

} // namespace tallyglass
