// The source of the current date. Code that reads the time takes a Clock, so that a test can set it.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <functional>

namespace tallyglass {

/// Returns the current date. Must be callable from any thread.
using Clock = std::function<Date()>;

/// The system clock.
[[nodiscard]] Date systemTime();

} // namespace tallyglass
