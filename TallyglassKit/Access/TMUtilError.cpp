#include "TallyglassKit/Access/TMUtilError.h"

#include "TallyglassKit/Platform/Text/Text.h"

#include <fmt/core.h>

#include <utility>

namespace tallyglass {

namespace {

struct Description {
    std::string operator()(const TMUtilError::CommandFailed& failure) const {
        if (const auto message = trimmed(failure.stderr); !message.empty())
            return std::string(message);
        return fmt::format("tmutil failed with exit code {}.", failure.exitCode);
    }
    std::string operator()(const TMUtilError::RequiresFullDiskAccess&) const {
        return "This requires Full Disk Access.";
    }
    std::string operator()(const TMUtilError::MalformedOutput& failure) const {
        return "Could not read tmutil output: " + failure.underlying;
    }
    std::string operator()(const TMUtilError::LaunchFailed& failure) const {
        return "Could not run tmutil: " + failure.text;
    }
};

} // namespace

TMUtilError::TMUtilError(Case value)
    : Error(std::visit(Description{}, value)), m_value(std::make_shared<const Case>(std::move(value))) {}

TMUtilError TMUtilError::commandFailed(std::int32_t exitCode, std::string stderrText, Arguments arguments) {
    return TMUtilError(CommandFailed{exitCode, std::move(stderrText), std::move(arguments)});
}

TMUtilError TMUtilError::requiresFullDiskAccess(Arguments arguments) {
    return TMUtilError(RequiresFullDiskAccess{std::move(arguments)});
}

TMUtilError TMUtilError::malformedOutput(std::string underlying, Arguments arguments) {
    return TMUtilError(MalformedOutput{std::move(underlying), std::move(arguments)});
}

TMUtilError TMUtilError::launchFailed(std::string text) {
    return TMUtilError(LaunchFailed{std::move(text)});
}

} // namespace tallyglass
