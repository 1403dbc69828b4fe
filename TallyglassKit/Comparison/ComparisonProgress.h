// The text for the progress of a comparison and for its failures. Free functions; any thread.

#pragma once

#include "TallyglassKit/Comparison/DiffEngine.h"

#include <exception>
#include <optional>
#include <string>

namespace tallyglass {

/// "Storing 500 of 12,000…" and the like; absent once the comparison is finished.
[[nodiscard]] std::optional<std::string> progressText(const DiffEngine::Progress& progress);

/// For a comparison that ended without result: "Comparison cancelled." or the failure's description.
[[nodiscard]] std::string comparisonFailure(const std::exception_ptr& failure);

/// "Could not open the diff cache: {description}".
[[nodiscard]] std::string cacheFailure(const std::exception_ptr& failure);

} // namespace tallyglass
