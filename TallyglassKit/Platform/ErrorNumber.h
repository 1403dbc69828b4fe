// The platform's words for its error numbers. Any thread; needs no descriptor, since having none left is one
// of them.

#pragma once

#include <cerrno>
#include <string>

namespace tallyglass {

/// The platform's text for an error number, such as "No such file or directory".
[[nodiscard]] std::string errorText(int number = errno);

} // namespace tallyglass
