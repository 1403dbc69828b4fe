// The terminal at which a person may be reading standard error. Any thread.

#pragma once

#include <cstddef>

namespace tallyglass {

/// Whether standard error is a terminal.
[[nodiscard]] bool standardErrorIsTerminal();

/// The columns of that terminal now; 80 when it doesn't say.
[[nodiscard]] std::size_t standardErrorWidth();

} // namespace tallyglass
