#include "Tallyglass/Models/ComparisonProgress.h"

#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/format.h>

namespace tallyglass {
namespace {

struct Words {
    std::optional<std::string> operator()(const DiffEngine::Running&) const {
        return "Running tmutil compare…";
    }
    std::optional<std::string> operator()(const DiffEngine::Decoding&) const { return "Reading results…"; }
    std::optional<std::string> operator()(const DiffEngine::Storing& storing) const {
        return fmt::format("Storing {} of {}…", formatGrouped(storing.done), formatGrouped(storing.total));
    }
    std::optional<std::string> operator()(const Comparison&) const { return std::nullopt; }
};

} // namespace

std::optional<std::string> progressText(const DiffEngine::Progress& progress) {
    return std::visit(Words(), progress);
}

std::string comparisonFailure(const std::exception_ptr& failure) {
    return isCancellation(failure) ? "Comparison cancelled." : describe(failure);
}

std::string cacheFailure(const std::exception_ptr& failure) {
    return "Could not open the diff cache: " + describe(failure);
}

} // namespace tallyglass
