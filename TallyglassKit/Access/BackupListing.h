// The words for the user when there are no backups to show. Static operations only; any thread.

#pragma once

#include <exception>
#include <string>

namespace tallyglass {

struct BackupListing {
    /// For a list that came out empty, without a failure.
    [[nodiscard]] static std::string message();
    /// For the failure that TMUtilRunner::backupPathsThrowing() threw.
    [[nodiscard]] static std::string message(const std::exception& failure);
    /// For a failure that was caught and kept; a null one stands for an empty list.
    [[nodiscard]] static std::string message(const std::exception_ptr& failure);
};

} // namespace tallyglass
