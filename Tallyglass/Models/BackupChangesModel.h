// What changed in one backup, against the one before it: a shallow comparison first, and then a tree whose
// folders are compared as they are opened, or a little ahead.
//
// Main thread only; listing, comparing and reading happen on the pool. `changed` tells of the observable
// fields, `treeChanged` of what `visibleRows` gives.

#pragma once

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/DiffSession.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/ChangeTree.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class BackupChangesModel : public QObject {
    Q_OBJECT

public:
    /// Finds the volume's folder below a backup's root. Called on the pool.
    using VolumeProvider = std::function<std::optional<std::string>(const std::string& root)>;

    /// What a screen shows of the model.
    struct Shown {
        std::optional<Comparison> comparison = {};
        std::vector<ChangeRecord> changes = {};
        std::optional<std::string> progressText = {};
        std::optional<std::string> error = {};
        std::optional<Date> resolvedFrom = {};
        std::optional<Date> resolvedTo = {};
        bool isOldest = false;
        std::int64_t elapsed = 0;
        std::int64_t bytesReceived = 0;
    };

    static constexpr std::int64_t rowLimit = 20'000; ///< the most rows of one comparison
    static constexpr std::int64_t prefetchDepth = 2; ///< of a folder's comparison

    /// Opens the user's cache with the first load, unless `session` is one that is open.
    explicit BackupChangesModel(AppEnvironment environment, std::shared_ptr<DiffSession> session = nullptr,
                                VolumeProvider volumeProvider = volumeComponent, QObject* parent = nullptr);
    ~BackupChangesModel() override;

    [[nodiscard]] const std::optional<Comparison>& comparison() const { return m_comparison.value(); }
    /// The rows of the first, shallow comparison.
    [[nodiscard]] const std::vector<ChangeRecord>& changes() const { return m_changes; }
    /// Present exactly while a load works.
    [[nodiscard]] const std::optional<std::string>& progressText() const { return m_progressText.value(); }
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }
    /// The dates of the pair. Of the oldest backup only the later one is known.
    [[nodiscard]] const std::optional<Date>& resolvedFrom() const { return m_resolvedFrom.value(); }
    [[nodiscard]] const std::optional<Date>& resolvedTo() const { return m_resolvedTo.value(); }
    /// The point matched the oldest backup, which has nothing before it.
    [[nodiscard]] bool isOldest() const { return m_isOldest.value(); }
    /// Seconds that the load has shown progress.
    [[nodiscard]] std::int64_t elapsed() const { return m_elapsed.value(); }
    [[nodiscard]] std::string elapsedText() const; ///< "1:15"; hours are minutes too
    /// Bytes of output that the comparison has brought so far.
    [[nodiscard]] std::int64_t bytesReceived() const { return m_bytesReceived.value(); }

    [[nodiscard]] bool showContentChangesOnly() const { return m_showContentChangesOnly; }
    [[nodiscard]] const std::string& searchText() const { return m_searchText; }
    void setShowContentChangesOnly(bool contentOnly);
    void setSearchText(const std::string& text);

    /// Compares the backup nearest to `target`, if one lies near enough, with the one before it.
    void load(Date target, std::int64_t depth);
    /// Whether a load or a fetch is under way.
    [[nodiscard]] bool isBusy() const { return m_task.isActive() || !m_fetches.empty(); }
    /// Ends the load. Comparisons of folders go on, even when the model has gone: the next model finds them
    /// in the cache.
    void cancel();

    /// Fills the model by other means than a machine.
    void show(const Shown& shown);

    [[nodiscard]] const ChangeTree& tree() const { return m_tree; }
    /// The list as it is now; its rows are valid until the next load.
    [[nodiscard]] const std::vector<DisplayRow>& visibleRows() const { return m_visibleRows; }
    void toggleExpand(const ChangeRecord& change);
    void fetchChildren(const std::string& path);

    /// The first folder below `root`, by name, that isn't hidden.
    [[nodiscard]] static std::optional<std::string> volumeComponent(const std::string& root);

signals:
    void changed();
    void treeChanged();

private:
    struct Result;

    void openCache(Date target, std::int64_t depth);
    void findBackups(Date target, std::int64_t depth);
    void take(const std::vector<DiffEngine::Backup>& backups, Date target, std::int64_t depth);
    void compare(const DiffEngine::Backup& from, const DiffEngine::Backup& to, std::int64_t depth);
    void apply(const DiffEngine::Progress& progress);
    void fail(const std::string& message);
    void finish();
    void tick();

    void seedTree(std::vector<ChangeRecord> rows, const std::string& fromRoot, const std::string& toRoot);
    void resetTree();
    void fetch(const std::string& path, const std::function<void()>& then);
    void takeVolume(const std::string& volume) { m_volume = volume; }
    void drainPrefetch();
    void updateRows();

    const AppEnvironment m_environment;
    std::shared_ptr<DiffSession> m_session; ///< null until the cache is open
    const VolumeProvider m_volumeProvider;
    const std::unique_ptr<Timer> m_ticker;
    TaskHandle m_task;
    bool m_isComparing = false; ///< the task is past finding the backups
    std::vector<ChangeRecord> m_changes;

    ChangeTree m_tree;
    std::optional<std::string> m_fromRoot;
    std::optional<std::string> m_toRoot;
    std::optional<std::string> m_volume; ///< found at the first fetch
    std::map<std::string, TaskHandle> m_fetches;
    bool m_showContentChangesOnly = true;
    std::string m_searchText;
    std::vector<DisplayRow> m_visibleRows;

    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesModel, std::optional<Comparison>, m_comparison,
                               &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesModel, std::optional<std::string>, m_progressText,
                               &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesModel, std::optional<std::string>, m_error,
                               &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesModel, std::optional<Date>, m_resolvedFrom,
                               &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(BackupChangesModel, std::optional<Date>, m_resolvedTo,
                               &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BackupChangesModel, bool, m_isOldest, false,
                                         &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BackupChangesModel, std::int64_t, m_elapsed, 0,
                                         &BackupChangesModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BackupChangesModel, std::int64_t, m_bytesReceived, 0,
                                         &BackupChangesModel::changed)
};

} // namespace tallyglass
