#include "TallyglassKit/Comparison/ComparisonProgress.h"

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/format.h>

namespace tallyglass {
namespace {

struct Text {
    std::optional<std::string> operator()(const DiffEngine::Running&) const {
        return "Running tmutil compare…";
    }
    std::optional<std::string> operator()(const DiffEngine::Decoding&) const { return "Reading results…"; }
    std::optional<std::string> operator()(const DiffEngine::Storing& storing) const {
        return fmt::format("Storing {} of {}…", formatGrouped(storing.done), formatGrouped(storing.total));
    }
    std::optional<std::string> operator()(const Comparison&) const { return std::nullopt; }
};

std::string description(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

} // namespace

std::optional<std::string> progressText(const DiffEngine::Progress& progress) {
    return std::visit(Text(), progress);
}

std::string comparisonFailure(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Cancelled&) {
        return "Comparison cancelled.";
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

std::string cacheFailure(const std::exception_ptr& failure) {
    return "Could not open the diff cache: " + description(failure);
}

} // namespace tallyglass
