#include "Tallyglass/Models/BackupChangesModel.h"

#include "Tallyglass/Models/ComparisonProgress.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"

#include <fmt/format.h>

#include <filesystem>

namespace tallyglass {

struct BackupChangesModel::Result {
    Comparison comparison;
    std::vector<ChangeRecord> changes;
};

BackupChangesModel::BackupChangesModel(AppEnvironment environment, std::shared_ptr<DiffSession> session,
                                       VolumeProvider volumeProvider, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_session(std::move(session)),
      m_volumeProvider(std::move(volumeProvider)), m_ticker(m_environment.makeTimer()) {
    connect(m_ticker.get(), &Timer::timeout, this, &BackupChangesModel::tick);
}

BackupChangesModel::~BackupChangesModel() = default;

// Loading.

void BackupChangesModel::load(Date target, std::int64_t depth) {
    m_elapsed.setValue(0);
    m_bytesReceived.setValue(0);
    m_error.setValue(std::nullopt);
    m_isOldest.setValue(false);
    resetTree();
    m_ticker->start(1);
    if (m_session)
        findBackups(target, depth);
    else
        openCache(target, depth);
}

void BackupChangesModel::openCache(Date target, std::int64_t depth) {
    m_task = startTask(
        this,
        [runner = m_environment.runner](TaskContext&) {
            return std::make_shared<DiffSession>(runner, TallyglassDatabase::defaultURL());
        },
        [this, target, depth](std::shared_ptr<DiffSession> session) {
            m_session = std::move(session);
            findBackups(target, depth);
        },
        [this](const std::exception_ptr& failure) { fail(cacheFailure(failure)); });
}

void BackupChangesModel::findBackups(Date target, std::int64_t depth) {
    m_progressText.setValue("Finding backup…");
    m_task = startTask(
        this,
        [session = m_session](TaskContext& task) {
            return session->engine().availableBackupsThrowing(task.stopToken());
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
    m_resolvedTo.setValue(backups[*index].date);
    if (*index == 0) {
        m_isOldest.setValue(true);
        return finish();
    }
    m_resolvedFrom.setValue(backups[*index - 1].date);
    compare(backups[*index - 1], backups[*index], depth);
}

void BackupChangesModel::compare(const DiffEngine::Backup& from, const DiffEngine::Backup& to,
                                 std::int64_t depth) {
    m_progressText.setValue("Comparing…");
    m_isComparing = true;
    m_task = startTask(
        this,
        [session = m_session, from = from.path, to = to.path,
         options = CompareOptions::fast(depth)](TaskContext& task) {
            // The result itself is what tells that it is finished, once its rows are there.
            const auto unlessFinished = [post = task.post(&BackupChangesModel::apply)](const auto& progress) {
                if (!std::holds_alternative<Comparison>(progress))
                    post(progress);
            };
            Result result;
            result.comparison =
                session->engine().compare(from, to, options, true, unlessFinished, task.stopToken());
            result.changes = session->store().changes(result.comparison.id, std::nullopt, std::nullopt,
                                                      rowLimit, 0, task.stopToken());
            return result;
        },
        [this, from = from.path, to = to.path](Result result) {
            m_comparison.setValue(std::move(result.comparison));
            m_changes = result.changes;
            seedTree(std::move(result.changes), from, to);
            finish();
        },
        [this](const std::exception_ptr& failure) { fail(comparisonFailure(failure)); });
}

void BackupChangesModel::show(const Shown& shown) {
    m_comparison.setValue(shown.comparison);
    m_changes = shown.changes;
    m_progressText.setValue(shown.progressText);
    m_error.setValue(shown.error);
    m_resolvedFrom.setValue(shown.resolvedFrom);
    m_resolvedTo.setValue(shown.resolvedTo);
    m_isOldest.setValue(shown.isOldest);
    m_elapsed.setValue(shown.elapsed);
    m_bytesReceived.setValue(shown.bytesReceived);
    resetTree();
    seedTree(shown.changes, {}, {});
}

void BackupChangesModel::apply(const DiffEngine::Progress& progress) {
    if (const auto* running = std::get_if<DiffEngine::Running>(&progress))
        m_bytesReceived.setValue(running->bytesReceived);
    m_progressText.setValue(tallyglass::progressText(progress));
}

void BackupChangesModel::fail(const std::string& message) {
    m_error.setValue(message);
    finish();
}

void BackupChangesModel::finish() {
    m_isComparing = false;
    m_progressText.setValue(std::nullopt);
    m_ticker->stop();
}

void BackupChangesModel::cancel() {
    m_task = {};
    if (m_isComparing)
        m_error.setValue("Comparison cancelled.");
    finish();
}

void BackupChangesModel::tick() {
    if (progressText())
        m_elapsed.setValue(elapsed() + 1);
    m_ticker->start(1);
}

std::string BackupChangesModel::elapsedText() const {
    return fmt::format("{}:{:02}", elapsed() / 60, elapsed() % 60);
}

std::optional<std::string> BackupChangesModel::volumeComponent(const std::string& root) {
    namespace fs = std::filesystem;
    std::optional<std::string> first;
    std::error_code failure;
    fs::directory_iterator entry(root, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().string();
        std::error_code unknown;
        if (!name.starts_with('.') && entry->is_directory(unknown) && (!first || name < *first))
            first = std::move(name);
    }
    return failure ? std::nullopt : first;
}

// The tree.

void BackupChangesModel::setShowContentChangesOnly(bool contentOnly) {
    if (std::exchange(m_showContentChangesOnly, contentOnly) != contentOnly)
        updateRows();
}

void BackupChangesModel::setSearchText(const std::string& text) {
    if (std::exchange(m_searchText, text) != text)
        updateRows();
}

void BackupChangesModel::seedTree(std::vector<ChangeRecord> rows, const std::string& fromRoot,
                                  const std::string& toRoot) {
    m_fromRoot = fromRoot;
    m_toRoot = toRoot;
    m_tree.seed(std::move(rows));
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
    if (!m_session || !m_fromRoot || !m_toRoot || !m_tree.beginFetch(path))
        return then();
    const auto finished = [this, path, then] {
        m_fetches.erase(path);
        then();
        updateRows();
    };
    m_fetches[path] = startTask(
        this,
        [session = m_session, from = *m_fromRoot, to = *m_toRoot, knownVolume = m_volume,
         findVolume = m_volumeProvider, path](TaskContext& task) {
            const auto volume = knownVolume ? knownVolume : findVolume(from);
            if (!volume)
                throw Error("Couldn't locate the backup volume.");
            task.post (&BackupChangesModel::takeVolume)(*volume);
            const Comparison comparison = session->engine().compareFolder(
                from, to, *volume, path, CompareOptions::fast(prefetchDepth), true, {}, task.stopToken());
            return session->store().changes(comparison.id, std::nullopt, std::nullopt, rowLimit, 0,
                                            task.stopToken());
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
    m_fetches[path].letFinish();
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
    emit treeChanged();
}

} // namespace tallyglass
