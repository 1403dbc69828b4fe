// Fills the model with an imagined machine, for looking at every state of the screens without having one.
// The same name at the same present always gives the same machine.
//
// Main thread only.

#pragma once

#include <span>
#include <string_view>

namespace tallyglass {

class AppModel;

struct FixtureSession {
    /// What can be imagined, in the order to show: "healthy", "warning" and so on.
    [[nodiscard]] static std::span<const std::string_view> names();

    /// Fills `model` and marks it as a fixture session. False for a name that isn't among those.
    static bool fill(AppModel& model, std::string_view name);
};

} // namespace tallyglass
