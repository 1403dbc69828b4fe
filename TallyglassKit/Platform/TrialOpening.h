// Opens a file for nothing but the answer whether it may be opened. Any thread.

#pragma once

#include <filesystem>

namespace tallyglass {

/// Opens `file` read-only, without waiting for a writer of a pipe, and closes it again. Returns 0, or the
/// error number of the failure.
[[nodiscard]] int errorOfOpening(const std::filesystem::path& file);

} // namespace tallyglass
