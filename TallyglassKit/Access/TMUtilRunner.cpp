#include "TallyglassKit/Access/TMUtilRunner.h"

#include "TallyglassKit/Platform/Processes/ChildProcess.h"
#include "TallyglassKit/Platform/SystemPaths.h"
#include "TallyglassKit/Platform/Text/Text.h"

#include <utility>

namespace tallyglass {

namespace {

std::int32_t exitCode(const ChildProcess::Exited& end) {
    return end.status;
}

std::int32_t exitCode(const ChildProcess::Signalled& end) {
    return end.signal;
}

TMUtilResult runChild(const std::string& executable, const TMUtilRunner::Arguments& arguments,
                      std::chrono::milliseconds killAfter, const TMUtilRunner::OnBytes& onBytes,
                      std::stop_token stop) {
    ChildProcess child{.executable = executable, .arguments = arguments, .killAfter = killAfter};
    if (onBytes)
        child.onOutput = [&](std::size_t total) { onBytes(static_cast<std::int64_t>(total)); };
    try {
        auto result = child.run(std::move(stop));
        return {.exitCode = std::visit([](const auto& end) { return exitCode(end); }, result.end),
                .stdout = std::move(result.output),
                .stderr = std::move(result.errors)};
    } catch (const ChildProcess::LaunchError& failure) {
        throw TMUtilError::launchFailed(failure.errorDescription());
    } catch (const ChildProcess::OutputError& failure) {
        throw TMUtilError::malformedOutput(failure.errorDescription(), arguments);
    }
}

} // namespace

TMUtilRunner::TMUtilRunner() : TMUtilRunner(SystemPaths::standard().path(executablePath)) {}

TMUtilRunner::TMUtilRunner(std::string path)
    : m_executable(std::make_shared<const std::string>(std::move(path))) {}

TMUtilRunner::TMUtilRunner(RunRaw fake)
    : m_executable(std::make_shared<const std::string>()),
      m_runRaw(std::make_shared<const RunRaw>(std::move(fake))) {}

TMUtilResult TMUtilRunner::runRaw(const Arguments& arguments, std::chrono::milliseconds killAfter,
                                  const OnBytes& onBytes, std::stop_token stop) const {
    if (m_runRaw)
        return (*m_runRaw)(arguments, killAfter, onBytes, std::move(stop));
    return runChild(*m_executable, arguments, killAfter, onBytes, std::move(stop));
}

TMUtilResult TMUtilRunner::run(const Arguments& arguments, std::stop_token stop) const {
    return run(arguments, nullptr, std::move(stop));
}

TMUtilResult TMUtilRunner::run(const Arguments& arguments, const OnBytes& onBytes,
                               std::stop_token stop) const {
    TMUtilResult result = runRaw(arguments, defaultKillAfter, onBytes, std::move(stop));
    if (result.exitCode == 0)
        return result;
    std::string message = result.stderrText();
    if (containsIgnoringCase(message, "Full Disk Access"))
        throw TMUtilError::requiresFullDiskAccess(arguments);
    throw TMUtilError::commandFailed(result.exitCode, std::move(message), arguments);
}

} // namespace tallyglass
