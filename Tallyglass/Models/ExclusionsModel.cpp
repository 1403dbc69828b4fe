#include "Tallyglass/Models/ExclusionsModel.h"

#include "TallyglassKit/Access/TimeMachinePreferences.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tallyglass {

namespace {

std::vector<std::string> watchedPaths(const UserDefaults& defaults) {
    return defaults.stringArray(ExclusionsModel::watchedPathsKey).value_or(std::vector<std::string>());
}

/// The path of an item; that of a folder may come with a slash at its end.
std::string filePath(const std::filesystem::path& item) {
    return (item.has_filename() ? item : item.parent_path()).string();
}

} // namespace

ExclusionsModel::ExclusionsModel(AppEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_manager(m_environment.runner) {}

ExclusionsModel::~ExclusionsModel() = default;

std::optional<bool> ExclusionsModel::pendingExclusion(std::string_view path) const {
    for (const Change& change : m_changes | std::views::reverse)
        if (change.path == path)
            return change.excludes;
    return std::nullopt;
}

void ExclusionsModel::refresh() {
    m_refreshTask = startTask(
        this,
        [paths = m_environment.paths, defaults = m_environment.defaults,
         manager = m_manager](TaskContext& task) {
            const auto settings = TimeMachinePreferences().read(paths);
            const auto skipPaths = settings ? settings->skipPaths : std::vector<std::string>();
            task.post (&ExclusionsModel::takeSkipPaths)(skipPaths);
            return manager.status(watchedPaths(defaults), skipPaths, task.stopToken());
        },
        [this](std::vector<ExclusionStatus> statuses) {
            m_statuses.setValue(std::move(statuses));
            m_isLoaded.setValue(true);
            endRefresh();
        },
        [this](const std::exception_ptr& failure) {
            fail(failure, std::nullopt);
            endRefresh();
        });
    updateBusy();
}

void ExclusionsModel::endRefresh() {
    if (std::erase_if(m_changes, [](const Change& change) { return change.isMade; }) > 0)
        emit statusesChanged();
    updateBusy();
}

void ExclusionsModel::addPaths(const std::vector<std::filesystem::path>& items) {
    edit([items](std::vector<std::string>& watched) {
        for (const auto& item : items)
            if (std::string path = filePath(item); !path.empty() && !std::ranges::count(watched, path))
                watched.push_back(std::move(path));
        std::ranges::sort(watched);
    });
}

void ExclusionsModel::stopTracking(const std::string& path) {
    edit([path](std::vector<std::string>& watched) { std::erase(watched, path); });
}

void ExclusionsModel::edit(Edit edit) {
    m_edits.push_back(std::move(edit));
    if (!m_editTask.isActive())
        startEdits();
    updateBusy();
}

void ExclusionsModel::startEdits() {
    m_editTask = startTask(
        this,
        [defaults = m_environment.defaults, edits = std::exchange(m_edits, {})](TaskContext&) {
            auto watched = watchedPaths(defaults);
            for (const Edit& edit : edits)
                edit(watched);
            defaults.setStringArray(watchedPathsKey, watched);
        },
        [this] {
            if (!failedPath())
                m_error.setValue(std::nullopt); // of an earlier attempt to save the list
            endEdits();
        },
        [this](const std::exception_ptr& failure) {
            fail(failure, std::nullopt);
            endEdits();
        });
    m_editTask.letFinish();
}

void ExclusionsModel::endEdits() {
    if (!m_edits.empty())
        startEdits();
    refresh();
}

void ExclusionsModel::setExcluded(bool excluded, const std::string& path) {
    m_error.setValue(std::nullopt);
    m_failedPath.setValue(std::nullopt);
    m_changes.push_back({.path = path, .excludes = excluded, .isMade = false});
    if (!m_changeTask.isActive())
        startChange();
    emit statusesChanged();
    updateBusy();
}

void ExclusionsModel::startChange() {
    const auto next = std::ranges::find(m_changes, false, &Change::isMade);
    if (next == m_changes.end())
        return;
    m_changeTask = startTask(
        this,
        [manager = m_manager, change = *next](TaskContext& task) {
            if (change.excludes)
                manager.exclude(change.path, task.stopToken());
            else
                manager.include(change.path, task.stopToken());
        },
        [this] {
            std::ranges::find(m_changes, false, &Change::isMade)->isMade = true;
            startChange();
            refresh();
        },
        [this](const std::exception_ptr& failure) {
            const auto failed = std::ranges::find(m_changes, false, &Change::isMade);
            fail(failure, failed->path);
            m_changes.erase(failed);
            startChange();
            emit statusesChanged();
            updateBusy();
        });
    m_changeTask.letFinish();
}

void ExclusionsModel::fail(const std::exception_ptr& failure, const std::optional<std::string>& path) {
    if (isCancellation(failure))
        return;
    m_failedPath.setValue(path);
    m_error.setValue(describe(failure));
}

void ExclusionsModel::updateBusy() {
    m_isBusy.setValue(m_refreshTask.isActive() || m_editTask.isActive() || !m_changes.empty());
}

} // namespace tallyglass
