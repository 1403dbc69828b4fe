// Whole files as bytes. Any thread. A stop throws Cancelled, and more than `most` bytes a FileError with
// EFBIG: for a file that has them already before anything is read, for one that grows as soon as it has.

#pragma once

#include "TallyglassKit/Platform/Files/ByteBuffer.h"

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>

namespace tallyglass {

/// The contents of the regular file at `path`, a symbolic link being followed. Throws FileError if it is
/// missing, may not be read or is something else than a file: a folder has EISDIR, and a pipe or a device,
/// which might never end, has EINVAL.
[[nodiscard]] ByteBuffer readFile(const std::string& path, std::stop_token stop = {},
                                  std::size_t most = SIZE_MAX);

/// What the program is given on standard input, of whichever kind that is, up to its end.
[[nodiscard]] ByteBuffer readStandardInput(std::stop_token stop = {}, std::size_t most = SIZE_MAX);

} // namespace tallyglass
