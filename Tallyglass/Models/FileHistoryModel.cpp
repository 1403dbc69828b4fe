#include "Tallyglass/Models/FileHistoryModel.h"

#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Desktop/Workspace.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Insight/FileHistoryScanner.h"
#include "TallyglassKit/Insight/VersionExport.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>

#include <QDir>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <utility>

namespace tallyglass {

namespace {

/// The paths traced lately with `path` as the latest. They are a convenience: a file that can't be written
/// keeps no scan from its result.
std::vector<std::string> rememberPath(const UserDefaults& defaults, const std::string& path) {
    auto paths = defaults.stringArray(FileHistoryModel::recentPathsKey).value_or(std::vector<std::string>());
    std::erase(paths, path);
    paths.insert(paths.begin(), path);
    paths.resize(std::min(paths.size(), FileHistoryModel::recentPathsLimit));
    try {
        defaults.setStringArray(FileHistoryModel::recentPathsKey, paths);
    } catch (const Error&) {
    }
    return paths;
}

std::string nameOf(const FileVersion& version) {
    return std::filesystem::path(version.path).filename().string();
}

/// The path on the Mac of an item of this file system, in which the Mac's folders may have another root.
std::string pathOnMac(const std::filesystem::path& item, const SystemPaths& paths) {
    if (const auto backup = BackupPath::containing(item.string()))
        return backup->logicalPath;
    const auto below = item.lexically_relative(paths.root());
    return below.empty() || *below.begin() == ".." ? item.string() : "/" + below.string();
}

/// A copy of the file in a temporary folder that only the user can enter; the system cleans it up. Blocks.
std::filesystem::path readOnlyCopyOf(const FileVersion& version, const std::stop_token& stop) {
    QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/tallyglass-open-XXXXXX"));
    if (!folder.isValid())
        throw Error(folder.errorString().toStdString());
    const auto copy = std::filesystem::path(folder.path().toStdString()) / nameOf(version);
    copyItem(version.path, copy.string(), ExistingItem::keep, {}, stop);
    using std::filesystem::perms;
    std::filesystem::permissions(copy, perms::owner_write | perms::group_write | perms::others_write,
                                 std::filesystem::perm_options::remove);
    folder.setAutoRemove(false); // not before: a failed copy leaves nothing
    return copy;
}

} // namespace

FileHistoryModel::FileHistoryModel(AppEnvironment environment, FilePanels& panels, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_panels(panels) {}

FileHistoryModel::~FileHistoryModel() = default;

void FileHistoryModel::prepare() {
    m_recentPathsTask = startTask(
        this,
        [defaults = m_environment.defaults](TaskContext&) {
            return defaults.stringArray(recentPathsKey).value_or(std::vector<std::string>());
        },
        [this](const std::vector<std::string>& paths) { m_recentPaths.setValue(paths); },
        [](const std::exception_ptr&) {});
}

void FileHistoryModel::scan() {
    const std::string path = FileHistoryScanner::normalize(logicalPath());
    if (path.empty())
        return;
    m_task.cancel();
    m_error.setValue(std::nullopt);
    m_progress.setValue("Listing backups…");
    m_task = startTask(
        this,
        [path, scanner = FileHistoryScanner(m_environment.runner),
         defaults = m_environment.defaults](TaskContext& task) -> Result {
            const auto backups = scanner.runner().backupPathsThrowing(task.stopToken());
            if (backups.empty())
                return {.unavailableReason = BackupListing::message()};
            const auto checking = [post = task.post(&FileHistoryModel::tellProgress)](std::size_t index,
                                                                                      std::size_t count) {
                post(fmt::format("Checking backup {} of {}…", index, count));
            };
            auto versions = scanner.versions(path, std::nullopt, backups, checking, task.stopToken());
            if (task.stopToken().stop_requested())
                throw Cancelled();
            auto spans = FileHistoryScanner::spans(versions);
            std::ranges::reverse(spans);
            return {std::move(versions), std::move(spans), rememberPath(defaults, path)};
        },
        [this](Result result) {
            if (result.unavailableReason)
                m_error.setValue(result.unavailableReason);
            else
                take(std::move(result));
            m_progress.setValue(std::nullopt);
        },
        [this](const std::exception_ptr& failure) {
            if (!isCancellation(failure))
                m_error.setValue(BackupListing::message(failure));
            m_progress.setValue(std::nullopt);
        });
}

void FileHistoryModel::take(Result result) {
    m_recentPathsTask.cancel(); // it would bring the list from before
    m_recentPaths.setValue(std::move(result.recentPaths));
    m_versions = std::move(result.versions);
    m_spans = std::move(result.spans);
    m_missingCount = std::ranges::count(m_versions, false, &FileVersion::exists);
    m_hasSearched = true;
    emit resultChanged();
}

void FileHistoryModel::cancelScan() {
    m_task.cancel();
    m_progress.setValue(std::nullopt);
}

void FileHistoryModel::trace(const std::filesystem::path& item) {
    setLogicalPath(pathOnMac(item, m_environment.paths));
    scan();
}

void FileHistoryModel::chooseItem() {
    m_panels.show({.kind = FilePanel::Kind::openFiles, .message = tr("Choose a file to trace")}, this,
                  [this](const FilePanels::Choice& chosen) {
                      if (!chosen.empty())
                          trace(chosen.front());
                  });
}

void FileHistoryModel::exportVersion(const FileVersion& version) {
    if (currentExport())
        return;
    m_panels.show({.kind = FilePanel::Kind::save,
                   .message = tr("Export this version out of the backup"),
                   .name = QString::fromStdString(nameOf(version))},
                  this, [this, version](const FilePanels::Choice& chosen) {
                      if (!chosen.empty() && !currentExport())
                          copyVersion(version, chosen.front());
                  });
}

void FileHistoryModel::copyVersion(const FileVersion& version, const std::filesystem::path& destination) {
    m_error.setValue(std::nullopt);
    m_export.setValue(Export{.name = nameOf(version), .progress = {}});
    m_exportTask = startTask(
        this,
        [version, destination](TaskContext& task) {
            tallyglass::exportVersion(version, destination.string(), task.post(&FileHistoryModel::tellCopied),
                                      task.stopToken());
        },
        [this, destination] {
            m_export.setValue(std::nullopt);
            if (m_environment.workspace)
                m_environment.workspace->reveal(destination);
        },
        [this](const std::exception_ptr& failure) {
            m_export.setValue(std::nullopt);
            if (!isCancellation(failure))
                m_error.setValue(fmt::format("Export failed: {}", describe(failure)));
        });
}

void FileHistoryModel::tellCopied(const CopyProgress& progress) {
    m_export.setValue(Export{.name = currentExport().value_or(Export()).name, .progress = progress});
}

void FileHistoryModel::cancelExport() {
    m_exportTask.stop();
}

void FileHistoryModel::openVersion(const FileVersion& version) {
    if (version.isDirectory || !m_environment.workspace)
        return;
    m_error.setValue(std::nullopt);
    m_openTask = startTask(
        this, [version](TaskContext& task) { return readOnlyCopyOf(version, task.stopToken()); },
        [this](const std::filesystem::path& copy) {
            m_environment.workspace->openUrl(QUrl::fromLocalFile(QString::fromStdString(copy.string())));
        },
        [this](const std::exception_ptr& failure) {
            if (!isCancellation(failure))
                m_error.setValue(fmt::format("The file can't be opened: {}", describe(failure)));
        });
}

void FileHistoryModel::revealVersion(const FileVersion& version) const {
    if (m_environment.workspace)
        m_environment.workspace->reveal(version.path);
}

} // namespace tallyglass
