// Fills the model with an imagined machine, for looking at every state of the screens without having one.
// The same name at the same present always gives the same machine.
//
// Main thread only.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <span>
#include <string_view>

namespace tallyglass {

class AppModel;
class BackupChangesModel;
class DiffModel;

struct FixtureSession {
    /// What can be imagined, in the order to show: "healthy", "warning" and so on.
    [[nodiscard]] static std::span<const std::string_view> names();

    /// Fills `model` and marks it as a fixture session. False for a name that isn't among those.
    static bool fill(AppModel& model, std::string_view name);

    /// Fill the models of a session's screens, as seen at `now`. Sessions that aren't about comparing show
    /// two backups that can be compared, and the changes of an ordinary backup.
    static void fill(DiffModel& model, std::string_view name, Date now);
    static void fill(BackupChangesModel& model, std::string_view name, Date now);
};

} // namespace tallyglass
