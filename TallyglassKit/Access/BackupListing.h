// The messages for the user when there are no backups to show. Static operations only; any thread.

#pragma once

#include <exception>
#include <string>

namespace tallyglass {

struct BackupListing {
    /// For an empty list, without a failure.
    [[nodiscard]] static std::string message();
    /// For the failure that TMUtilRunner::backupPathsThrowing() threw.
    [[nodiscard]] static std::string message(const std::exception& failure);
    /// For a stored exception; null means an empty list.
    [[nodiscard]] static std::string message(const std::exception_ptr& failure);
};

} // namespace tallyglass
