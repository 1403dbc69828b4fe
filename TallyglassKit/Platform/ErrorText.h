// The platform's texts for its error numbers. Any thread. Opens no file, so that it can report that no
// descriptor is left.

#pragma once

#include <cerrno>
#include <string>

namespace tallyglass {

/// The platform's text for an error number, such as "No such file or directory".
[[nodiscard]] std::string errorText(int number = errno);

} // namespace tallyglass
