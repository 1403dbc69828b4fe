// The base of every failure that has a message for the user. Immutable; any thread may read it.
//
// A cancellation isn't one: it has no message and is caught first.

#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace tallyglass {

class Error : public std::runtime_error {
public:
    /// A zero byte in `description`, which may come from external data and would truncate what(), becomes
    /// U+FFFD.
    explicit Error(const std::string& description);

    /// The text to show, the same as what().
    [[nodiscard]] std::string errorDescription() const { return what(); }
};

/// Thrown by an operation whose stop token was stopped. Deliberately not an Error.
class Cancelled : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "Cancelled"; }
};

} // namespace tallyglass
