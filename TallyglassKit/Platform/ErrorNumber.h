// The platform's words for its error numbers. Any thread.

#pragma once

#include <cerrno>
#include <string>
#include <system_error>

namespace tallyglass {

/// The platform's text for an error number, such as "No such file or directory".
[[nodiscard]] inline std::string errorText(int number = errno) {
    return std::generic_category().message(number);
}

} // namespace tallyglass
