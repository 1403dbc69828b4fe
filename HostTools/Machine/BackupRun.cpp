#include "HostTools/Machine/BackupRun.h"

#include "HostTools/Machine/Exclusions.h"
#include "HostTools/Machine/RsyncCopier.h"
#include "HostTools/Machine/TreeComparison.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Health/BackupResultCode.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <unordered_set>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

constexpr auto workSuffix = ".inprogress";

std::int64_t physicalSize(const struct stat& status) {
    return static_cast<std::int64_t>(status.st_blocks) * 512;
}

} // namespace

fs::path liveRootOf(const MachinePaths& machine, const HostPreferences& preferences) {
    const bool isInRoot = std::ranges::any_of(preferences.sources, [&](const std::string& source) {
        return isWithin(source, machine.root().string());
    });
    return isInRoot ? machine.root() : fs::path("/");
}

struct BackupRun::Survey final : ComparisonSink {
    explicit Survey(BackupRun& owner) : run(owner) {}

    void differs(const TreeDifference& difference) override {
        if (!difference.newer)
            return;
        ++items;
        if (S_ISREG(difference.newer->st_mode)) {
            bytes += difference.newer->st_size;
            ++files;
        }
    }
    void unreadable(const std::string&, int) override {} // the copy omits it, too
    void excluded(std::string_view path) override { excludedPaths.emplace_back(path); }
    void entered(std::string_view, const struct stat*, const struct stat*) override { run.stopIfAsked(); }

    BackupRun& run;
    std::int64_t items = 0;
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::vector<std::string> excludedPaths;
};

struct BackupRun::Cost final : ComparisonSink {
    void differs(const TreeDifference& difference) override {
        if (difference.older && difference.older->st_nlink == 1)
            uniqueToPrevious += physicalSize(*difference.older);
        if (!difference.newer)
            return;
        ++changedItems;
        if (S_ISDIR(difference.newer->st_mode))
            return;
        const bool isCounted =
            difference.newer->st_nlink > 1 && !linked.insert(difference.newer->st_ino).second;
        logicalSize += isCounted ? 0 : difference.newer->st_size;
        writtenSize += isCounted ? 0 : physicalSize(*difference.newer);
    }
    void unreadable(const std::string&, int) override {}
    void entered(std::string_view, const struct stat* older, const struct stat* newer) override {
        // Folders can't be hard-linked: each backup has its own.
        uniqueToPrevious += older ? physicalSize(*older) : 0;
        writtenSize += newer ? physicalSize(*newer) : 0;
    }

    std::int64_t changedItems = 0;
    std::int64_t sameFiles = 0;
    std::int64_t logicalSize = 0;
    std::int64_t writtenSize = 0;
    std::int64_t uniqueToPrevious = 0;
    std::unordered_set<ino_t> linked; ///< copied already under another name
};

BackupRun::BackupRun(const MachinePaths& machine, Environment environment, FileLock lock)
    : m_machine(machine), m_environment(std::move(environment)), m_lock(std::move(lock)),
      m_start(m_environment.clock()) {
    if (!m_environment.copier)
        m_environment.copier = std::make_unique<RsyncCopier>(m_lock.fd());
}

std::optional<BackupRun> BackupRun::begin(const MachinePaths& machine, Environment environment,
                                          const std::string& destinationID) {
    auto lock = RunFiles::take(machine);
    if (!lock)
        return std::nullopt;
    BackupRun run(machine, std::move(environment), std::move(*lock));
    run.m_preferences = run.edit([&](HostPreferences& preferences) {
        const HostDestination* chosen =
            destinationID.empty() ? preferences.current() : preferences.destination(destinationID);
        if (!chosen)
            throw Error(destinationID.empty() ? "No destinations configured."
                                              : fmt::format("No destination {}.", destinationID));
        run.m_destination = *chosen;
        preferences.currentDestinationID = chosen->id;
        preferences.destination(chosen->id)->attemptDates.push_back(run.m_start);
    });
    run.m_folder = machine.backups(run.m_destination.uuid);
    run.show(BackupPhase::starting);
    return run;
}

std::int64_t BackupRun::perform() {
    std::int64_t result = BackupResult::success;
    m_failure.clear();
    try {
        makeBackup();
    } catch (const BackupFailure& failure) {
        result = failure.result();
        m_failure = failure.what();
    } catch (const std::exception& failure) {
        result = BackupResult::copyFailed;
        m_failure = failure.what();
    }
    if (result != BackupResult::success && !m_work.empty())
        removeTree(m_work);
    end(result);
    return result;
}

void BackupRun::makeBackup() {
    show(BackupPhase::findingVolume);
    checkStart();
    m_state.destinationID = m_destination.id;
    m_state.mountPoint = m_machine.mountPoint(m_destination.name);
    removeLeftovers();
    m_destination.refresh(m_folder);
    const auto snapshots = Snapshots::list(m_folder);
    if (!snapshots.empty())
        m_previous = snapshots.back();

    show(BackupPhase::findingChanges);
    const Survey found = survey();
    checkSpace(found);
    copy(found);
    finish();
}

void BackupRun::checkStart() {
    const auto arranged = m_preferences.nextResult;
    if (arranged)
        edit([](HostPreferences& preferences) { preferences.nextResult.reset(); });
    if (arranged && BackupResultCode{*arranged}.isDeferral())
        throw BackupFailure(*arranged, "The backup was put off.");
    std::error_code failure;
    if (!fs::is_directory(m_folder, failure))
        throw BackupFailure(BackupResult::destinationMissing, m_folder.string() + " can't be found.");
    for (const std::string& source : m_preferences.sources)
        if (!fs::is_directory(source, failure))
            throw BackupFailure(BackupResult::sourceMissing, source + " can't be found.");
}

BackupRun::Survey BackupRun::survey() {
    Survey found(*this);
    const ExclusionRules rules(m_machine, m_preferences);
    compareTrees({.older = previousVolume(),
                  .newer = liveRoot(),
                  .exclusions = &rules,
                  .within = logicalSources(),
                  .oneFileSystem = true},
                 {}, found);
    m_state.changedItems = found.items;
    m_state.totalBytes = found.bytes;
    m_state.totalFiles = found.files;
    return found;
}

void BackupRun::checkSpace(const Survey& found) const {
    if (found.bytes > m_destination.bytesAvailable)
        throw BackupFailure(BackupResult::noSpace, fmt::format("{} bytes to copy, {} available.", found.bytes,
                                                               m_destination.bytesAvailable));
}

void BackupRun::copy(const Survey& found) {
    m_work = m_folder / (BackupPath::stamp(m_start) + workSuffix);
    const fs::path volume = m_work / "backup" / m_preferences.volumeName;
    fs::create_directories(volume);
    const Date copyStart = m_environment.clock();
    show(BackupPhase::copying);
    if (m_preferences.nextResult && *m_preferences.nextResult != BackupResult::success)
        throw BackupFailure(*m_preferences.nextResult, "The backup was made to fail.");

    m_environment.copier->copy({.liveRoot = liveRoot(),
                                .sources = logicalSources(),
                                .excluded = found.excludedPaths,
                                .volume = volume,
                                .previous = previousVolume(),
                                .limit = m_preferences.copyLimit,
                                .runFolder = m_machine.runFolder()},
                               [&](const CopyProgress& progress) {
                                   stopIfAsked();
                                   const std::int64_t bytes = std::min(progress.bytes, m_state.totalBytes);
                                   if (bytes == m_state.bytes && progress.files == m_state.files)
                                       return;
                                   m_state.bytes = bytes;
                                   m_state.files = std::min(progress.files, m_state.totalFiles);
                                   const double elapsed = (m_environment.clock() - copyStart).count();
                                   if (bytes > 0 && elapsed > 0)
                                       m_state.timeRemaining =
                                           elapsed * static_cast<double>(m_state.totalBytes - bytes) /
                                           static_cast<double>(bytes);
                                   write();
                               });
}

void BackupRun::finish() {
    show(BackupPhase::finishing);
    completeVolumeFolder();
    const Cost cost = measure();
    if (m_destination.quota && cost.writtenSize > m_destination.bytesAvailable)
        throw BackupFailure(
            BackupResult::outOfSpace,
            fmt::format("{} bytes written, {} available.", cost.writtenSize, m_destination.bytesAvailable));
    if (m_environment.durability == Durability::disk) {
        const FileDescriptor folder(open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        syncfs(folder.fd());
    }
    stopIfAsked();
    // Stamps have whole seconds; another backup in the same second uses the next.
    Date completion = m_environment.clock();
    while (fs::exists(Snapshots::place(m_folder, BackupPath::stamp(completion)).parent_path()))
        completion += std::chrono::seconds(1);
    commit(completion);
    record(cost, completion);
}

/// The copy creates the volume's folder, which gets the properties of its source.
void BackupRun::completeVolumeFolder() const {
    const fs::path volume = m_work / "backup" / m_preferences.volumeName;
    struct stat status {};
    if (stat(liveRoot().c_str(), &status) != 0)
        throw FileError(errno, liveRoot().string());
    const timespec times[2] = {status.st_mtim, status.st_mtim};
    chmod(volume.c_str(), status.st_mode & 07777);
    utimensat(AT_FDCWD, volume.c_str(), times, 0);
}

BackupRun::Cost BackupRun::measure() {
    Cost cost;
    cost.sameFiles = compareTrees({.older = previousVolume(),
                                   .newer = m_work / "backup" / m_preferences.volumeName,
                                   .within = logicalSources()},
                                  {}, cost);
    return cost;
}

/// The last rename makes it a backup. Until then its name marks it as incomplete.
void BackupRun::commit(Date completion) {
    const fs::path place = Snapshots::place(m_folder, BackupPath::stamp(completion));
    const fs::path inner = m_work / place.filename();
    fs::rename(m_work / "backup", inner);
    const auto seconds = secondsSince1970(completion);
    const timespec time{.tv_sec = static_cast<time_t>(seconds), .tv_nsec = 0};
    const timespec times[2] = {time, time};
    utimensat(AT_FDCWD, inner.c_str(), times, 0);
    fs::rename(m_work, place.parent_path());
    m_work.clear();
}

void BackupRun::record(const Cost& cost, Date completion) {
    Snapshots::record(m_folder,
                      {.completion = completion,
                       .start = m_start,
                       .changedCount = cost.changedItems,
                       .changedLogicalSize = cost.logicalSize,
                       .changedPhysicalSize = cost.writtenSize,
                       .propagatedCount = cost.sameFiles,
                       .uniqueSize = cost.writtenSize},
                      m_previous ? std::optional(cost.uniqueToPrevious) : std::nullopt,
                      m_environment.durability);
}

/// Records the result and the current state of the destination's folder, which also repairs the records of a
/// killed backup.
void BackupRun::end(std::int64_t result) {
    edit([&](HostPreferences& preferences) {
        HostDestination* destination = preferences.destination(m_destination.id);
        if (!destination)
            return;
        destination->result = result;
        std::error_code failure;
        if (fs::is_directory(m_folder, failure))
            destination->refresh(m_folder);
    });
    RunFiles::clear(m_machine);
}

HostPreferences BackupRun::edit(const std::function<void(HostPreferences&)>& change) const {
    return HostPreferences::edit(m_machine, change, m_environment.durability);
}

void BackupRun::show(BackupPhase phase) {
    m_state.phase = phase;
    m_state.stateChange = m_environment.clock();
    write();
}

void BackupRun::write() {
    RunFiles::write(m_machine, m_state);
    if (m_environment.watch)
        m_environment.watch(m_state);
}

void BackupRun::stopIfAsked() const {
    if (RunFiles::isStopRequested(m_machine))
        throw BackupFailure(BackupResult::cancelled, "The backup was stopped.");
}

void BackupRun::removeLeftovers() const {
    std::vector<fs::path> leftovers;
    for (const auto& entry : fs::directory_iterator(m_folder))
        if (entry.path().extension() == workSuffix)
            leftovers.push_back(entry.path());
    std::ranges::for_each(leftovers, removeTree);
}

fs::path BackupRun::liveRoot() const {
    return liveRootOf(m_machine, m_preferences);
}

std::vector<std::string> BackupRun::logicalSources() const {
    const std::string root = liveRoot() == "/" ? "" : liveRoot().string();
    std::vector<std::string> result;
    for (const std::string& source : m_preferences.sources)
        result.push_back(source.substr(root.size()));
    return result;
}

fs::path BackupRun::previousVolume() const {
    const fs::path volume = m_previous ? m_previous->path / m_preferences.volumeName : fs::path();
    std::error_code missing;
    return fs::is_directory(volume, missing) ? volume : fs::path();
}

} // namespace tallyglass
