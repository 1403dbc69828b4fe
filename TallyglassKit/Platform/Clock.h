// Where the program's moments come from. Whatever measures time takes a Clock, so that a test can set it.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <functional>

namespace tallyglass {

/// Tells the present moment. Must be callable from any thread.
using Clock = std::function<Date()>;

/// The computer's own clock.
[[nodiscard]] Date systemTime();

} // namespace tallyglass
