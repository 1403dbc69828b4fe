// The name with which the user of this process logged in. Any thread.

#pragma once

#include <string>

namespace tallyglass {

/// Empty if the system doesn't know the user.
[[nodiscard]] std::string loginName();

} // namespace tallyglass
