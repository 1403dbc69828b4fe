// Time Machine's settings from the system's preferences. A value.

#pragma once

#include "TallyglassKit/Access/TMDestination.h"

#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

struct TMSettings {
    bool autoBackupEnabled = false;
    std::optional<double> autoBackupInterval = {}; ///< seconds between automatic backups
    bool requiresACPower = false;                  ///< backups only run on mains power
    std::vector<std::string> skipPaths = {};       ///< excluded in the settings
    std::vector<TMDestination> destinations = {};  ///< in the order of the preferences

    friend bool operator==(const TMSettings&, const TMSettings&) = default;
};

} // namespace tallyglass
