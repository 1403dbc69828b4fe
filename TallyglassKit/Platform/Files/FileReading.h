// Whole files as bytes. Any thread. A stop throws Cancelled. More than `most` bytes throw a FileError with
// EFBIG: before reading if the file is that large already, else as soon as the limit is exceeded.

#pragma once

#include "TallyglassKit/Platform/Files/ByteBuffer.h"

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>

namespace tallyglass {

/// The contents of the regular file at `path`; symbolic links are followed. Throws FileError if it is
/// missing, unreadable or not a regular file: EISDIR for a folder, EINVAL for a pipe or device, which might
/// never end.
[[nodiscard]] ByteBuffer readFile(const std::string& path, std::stop_token stop = {},
                                  std::size_t most = SIZE_MAX);

/// All of standard input, whatever its kind.
[[nodiscard]] ByteBuffer readStandardInput(std::stop_token stop = {}, std::size_t most = SIZE_MAX);

} // namespace tallyglass
