#include "Tallyglass/Models/BackupChangesModel.h"

#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Comparison/BackupVolume.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/ComparisonProgress.h"
#include "TallyglassKit/Platform/Error.h"

#include <utility>

namespace tallyglass {

BackupChangesModel::BackupChangesModel(AppEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_job(m_environment) {
    connect(&m_job, &ComparisonJob::progressChanged, this, &BackupChangesModel::progressChanged);
    connect(&m_job, &ComparisonJob::elapsedChanged, this, &BackupChangesModel::elapsedChanged);
    connect(&m_job, &ComparisonJob::resultChanged, this, &BackupChangesModel::resultChanged);
    connect(&m_job, &ComparisonJob::errorChanged, this, &BackupChangesModel::errorChanged);
    connect(&m_job, &ComparisonJob::succeeded, this, &BackupChangesModel::seedTree);
}

BackupChangesModel::~BackupChangesModel() = default;

// Loading.

void BackupChangesModel::load(Date target, std::int64_t depth) {
    m_job.reset();
    m_loadError.setValue(std::nullopt);
    m_isOldest.setValue(false);
    resetTree();
    if (m_environment.cache->isOpen())
        findBackups(target, depth);
    else
        openCache(target, depth);
}

void BackupChangesModel::openCache(Date target, std::int64_t depth) {
    m_task = startTask(
        this, [cache = m_environment.cache](TaskContext& task) { cache->open(task.stopToken()); },
        [this, target, depth] { findBackups(target, depth); },
        [this](const std::exception_ptr& failure) { fail(cacheFailure(failure)); });
}

void BackupChangesModel::findBackups(Date target, std::int64_t depth) {
    m_job.begin("Finding backup…");
    m_task = startTask(
        this,
        [cache = m_environment.cache](TaskContext& task) {
            return cache->open().engine().availableBackupsThrowing(task.stopToken());
        },
        [this, target, depth](const std::vector<DiffEngine::Backup>& backups) {
            take(backups, target, depth);
        },
        [this](const std::exception_ptr& failure) { fail(BackupListing::message(failure)); });
}

void BackupChangesModel::take(const std::vector<DiffEngine::Backup>& backups, Date target,
                              std::int64_t depth) {
    if (backups.empty())
        return fail(BackupListing::message());
    const auto index =
        NearestMatch::index(target, backups, NearestMatch::backupTolerance, &DiffEngine::Backup::date);
    if (!index)
        return fail("Couldn't confidently match this point to a specific backup, so no diff is shown rather "
                    "than risk showing the wrong one.");
    const DiffEngine::Backup& to = backups[*index];
    m_resolvedTo.setValue(to.date);
    if (*index == 0) {
        m_isOldest.setValue(true);
        return m_job.end();
    }
    const DiffEngine::Backup& from = backups[*index - 1];
    m_resolvedFrom.setValue(from.date);
    m_job.start(from.path, to.path, CompareOptions::fast(depth), true);
}

void BackupChangesModel::fail(const std::string& message) {
    m_loadError.setValue(message);
    m_job.end();
}

void BackupChangesModel::cancel() {
    m_task.cancel();
    m_job.abandon();
}

// The tree.

void BackupChangesModel::setShowContentChangesOnly(bool contentOnly) {
    if (std::exchange(m_showContentChangesOnly, contentOnly) == contentOnly)
        return;
    emit filterChanged();
    updateRows();
}

void BackupChangesModel::setSearchText(const std::string& text) {
    if (std::exchange(m_searchText, text) == text)
        return;
    emit filterChanged();
    updateRows();
}

void BackupChangesModel::seedTree() {
    m_fromRoot = comparison()->fromPath;
    m_toRoot = comparison()->toPath;
    m_tree.seed(m_job.rows());
    drainPrefetch();
    updateRows();
}

void BackupChangesModel::resetTree() {
    m_fetches.clear();
    m_tree.reset();
    m_fromRoot.reset();
    m_toRoot.reset();
    m_volume.reset();
    updateRows();
}

void BackupChangesModel::toggleExpand(const ChangeRecord& change) {
    if (m_tree.toggleExpand(change))
        fetchChildren(change.path);
    drainPrefetch();
    updateRows();
}

void BackupChangesModel::fetchChildren(const std::string& path) {
    fetch(path, [] {});
    updateRows();
}

void BackupChangesModel::fetch(const std::string& path, const std::function<void()>& then) {
    if (!m_fromRoot || !m_toRoot || !m_tree.beginFetch(path))
        return then();
    const auto finished = [this, path, then] {
        m_fetches.erase(path);
        then();
        updateRows();
    };
    TaskHandle& task = m_fetches[path];
    task = startTask(
        this,
        [cache = m_environment.cache, from = *m_fromRoot, to = *m_toRoot, knownVolume = m_volume,
         path](TaskContext& context) {
            const auto volume = knownVolume ? knownVolume : volumeComponent(from);
            if (!volume)
                throw Error("Couldn't locate the backup volume.");
            context.post (&BackupChangesModel::takeVolume)(*volume);
            auto& open = cache->open();
            return open
                .load(open.engine().compareFolder(from, to, *volume, path,
                                                  CompareOptions::fast(prefetchDepth), true, {},
                                                  context.stopToken()),
                      context.stopToken())
                .rows;
        },
        [this, path, finished](std::vector<ChangeRecord> rows) {
            m_tree.fetchSucceeded(path, std::move(rows));
            finished();
        },
        [this, path, finished](const std::exception_ptr& failure) {
            if (isCancellation(failure))
                m_tree.fetchCancelled(path);
            else
                m_tree.fetchFailed(path, describe(failure));
            finished();
        });
    task.letFinish();
}

void BackupChangesModel::drainPrefetch() {
    while (const auto folder = m_tree.nextPrefetch()) {
        fetch(*folder, [this] {
            m_tree.prefetchEnded();
            drainPrefetch();
        });
    }
}

void BackupChangesModel::updateRows() {
    m_visibleRows = m_tree.visibleRows(m_showContentChangesOnly, m_searchText);
    emit rowsChanged();
}

} // namespace tallyglass
