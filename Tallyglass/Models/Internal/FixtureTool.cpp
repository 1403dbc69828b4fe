#include "Tallyglass/Models/Internal/FixtureTool.h"

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/Internal/FixtureHistory.h"
#include "Tallyglass/Models/Internal/FixturePropertyList.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>

namespace tallyglass {

namespace {

constexpr int allPairs = 30; // of neighbours among the backups of a session

TMUtilResult success(const std::string& output) {
    return {.exitCode = 0, .stdout = output, .stderr = {}};
}

TMUtilResult failure(const std::string& text) {
    return {.exitCode = 1, .stdout = {}, .stderr = text};
}

[[noreturn]] void waitForStop(const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait(lock, stop, [] { return false; });
    throw Cancelled();
}

TMUtilResult answer(const FixtureAnswer& from, const TMUtilRunner::OnBytes& onBytes,
                    const std::stop_token& stop) {
    if (from.isWaiting) {
        if (onBytes && from.bytesBeforeWait > 0)
            onBytes(from.bytesBeforeWait);
        waitForStop(stop);
    }
    return from.failure.empty() ? success(from.output) : failure(from.failure);
}

/// A comparison takes so long for each property that it is to look at. A stop ends it.
void work(const TMUtilRunner::Arguments& comparison, std::chrono::milliseconds timePerProperty,
          const std::stop_token& stop) {
    if (timePerProperty == timePerProperty.zero())
        return;
    const auto properties = static_cast<int>(comparison[2].size()) - 1; // such as "-st"
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    if (never.wait_for(lock, stop, timePerProperty * properties, [&] { return stop.stop_requested(); }))
        throw Cancelled();
}

/// Without a destination they are on a disk that isn't one any more.
Date newestBackup(const FixtureMachine& machine, Date now) {
    const auto& destinations = machine.settings.destinations;
    const auto latest = destinations.empty() ? std::nullopt : destinations.front().latestSnapshot();
    return latest.value_or(now - std::chrono::minutes(38));
}

/// With backups that are there, if the session traces a file through them.
FixtureComparisons comparisonsOf(std::string_view name, Date newest, const FixtureFiles& files) {
    FixtureComparisons all = FixtureComparisons::make(name, newest);
    if (name.starts_with("history-"))
        all.listing.output = FixtureHistory::write(files, all.listing.output);
    return all;
}

template <typename Value>
std::string entry(std::string_view key, const std::optional<Value>& value) {
    return value ? fmt::format("{} = \"{}\";\n", key, *value) : std::string();
}

/// As tmutil prints it, in the old form of property lists.
std::string statusText(const BackupStatus& status) {
    const std::string progress = entry("Percent", status.percent) + entry("bytes", status.bytesCopied) +
                                 entry("totalBytes", status.totalBytes) + entry("files", status.filesCopied) +
                                 entry("totalFiles", status.totalFiles) +
                                 entry("TimeRemaining", status.timeRemaining);
    return fmt::format("Backup session status:\n{{\n{}{}Progress = {{\n{}}};\nRunning = {:d};\n"
                       "Stopping = {:d};\n}}\n",
                       entry("BackupPhase", status.phase),
                       entry("NumberOfChangedItems", status.numberOfChangedItems), progress, status.isRunning,
                       status.isStopping);
}

} // namespace

FixtureTool::FixtureTool(std::string_view name, Date now)
    : m_machine(FixtureMachine::make(name, now).value()), m_files(m_machine),
      m_results(comparisonsOf(name, newestBackup(m_machine, now), m_files)),
      m_exclusions(name, m_files, m_machine.settings.skipPaths), m_now(now) {}

Date FixtureTool::now() const {
    const double reading = m_machine.rate && m_readings < 2 ? AppModel::runningInterval : 0;
    const double comparing = m_results.secondsEach * std::max(0, allPairs - m_comparisons);
    return m_now - std::chrono::duration<double>(reading + comparing);
}

TMUtilResult FixtureTool::status() {
    const int reading = ++m_readings;
    if (m_machine.statusFailure)
        return failure(*m_machine.statusFailure);
    BackupStatus status = m_machine.status;
    if (m_machine.rate && reading == 1) {
        const auto before = [](std::optional<std::int64_t>& count, double perSecond) {
            *count -= static_cast<std::int64_t>(perSecond * AppModel::runningInterval);
        };
        before(status.bytesCopied, m_machine.rate->bytesPerSecond);
        before(status.filesCopied, m_machine.rate->filesPerSecond);
    }
    return success(statusText(status));
}

/// The changes in one backup are compared less deep than anything on the compare screen.
const FixtureAnswer& FixtureTool::comparison(const TMUtilRunner::Arguments& arguments) {
    const auto changes = CompareOptions::fast(2).arguments();
    if (!std::ranges::search(arguments, changes).empty())
        return m_results.changes;
    ++m_comparisons;
    const std::string& listing = m_results.listing.output;
    const std::size_t newer = listing.find(arguments.back() + "\n");
    const std::string_view following = std::string_view(listing).substr(std::min(newer, listing.size()));
    const auto age = static_cast<std::size_t>(std::ranges::count(following, '\n')) - 1;
    const auto exception = m_results.exceptions.find(age);
    return exception == m_results.exceptions.end() ? m_results.backups : exception->second;
}

TMUtilResult FixtureTool::run(const TMUtilRunner::Arguments& arguments, const TMUtilRunner::OnBytes& onBytes,
                              const std::stop_token& stop) {
    const std::string& verb = arguments.front();
    if (verb == "status")
        return status();
    if (verb == "stopbackup" && m_machine.stopFailure)
        return failure(*m_machine.stopFailure);
    if (verb == "machinedirectory")
        return m_files.machineDirectory().empty() ? failure("There is no machine directory.")
                                                  : success(m_files.machineDirectory() + "\n");
    if (verb == "listbackups")
        return answer(m_results.listing, onBytes, stop);
    if (verb == "latestbackup")
        return answer(m_results.latest, onBytes, stop);
    if (verb == "destinationinfo")
        return m_machine.infoFailure ? failure(*m_machine.infoFailure)
                                     : success(fixture::propertyList(fixture::dictionary({})));
    if (verb == "compare") {
        const FixtureAnswer& result = comparison(arguments);
        work(arguments, result.timePerProperty, stop);
        return answer(result, onBytes, stop);
    }
    if (verb == "isexcluded" || verb == "addexclusion" || verb == "removeexclusion")
        return m_exclusions.run(verb, std::span(arguments).subspan(1));
    return success({});
}

} // namespace tallyglass
