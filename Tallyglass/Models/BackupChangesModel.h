// What changed in one backup, against the one before it: a shallow comparison first, and then a tree whose
// folders are compared as they are opened, or a little ahead.
//
// Main thread only; listing, comparing and reading happen on the pool. Setting an equal value emits nothing.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/ComparisonJob.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/ChangeTree.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Platform/Date.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class BackupChangesModel : public QObject {
    Q_OBJECT

public:
    static constexpr std::int64_t prefetchDepth = 2; ///< of a folder's comparison

    explicit BackupChangesModel(AppEnvironment environment, QObject* parent = nullptr);
    ~BackupChangesModel() override;

    [[nodiscard]] const std::optional<Comparison>& comparison() const { return m_job.comparison(); }
    /// Present exactly while a load works, once the cache is open.
    [[nodiscard]] const std::optional<std::string>& progressText() const { return m_job.progressText(); }
    [[nodiscard]] const std::optional<std::string>& error() const {
        return m_loadError.value() ? m_loadError.value() : m_job.error();
    }
    /// The dates of the pair. Of the oldest backup only the later one is known.
    [[nodiscard]] const std::optional<Date>& resolvedFrom() const { return m_resolvedFrom.value(); }
    [[nodiscard]] const std::optional<Date>& resolvedTo() const { return m_resolvedTo.value(); }
    /// The point matched the oldest backup, which has nothing before it.
    [[nodiscard]] bool isOldest() const { return m_isOldest.value(); }
    /// Seconds that the load has shown progress.
    [[nodiscard]] std::int64_t elapsed() const { return m_job.elapsed(); }
    [[nodiscard]] std::string elapsedText() const { return m_job.elapsedText(); }
    /// Bytes of output that the comparison has brought so far.
    [[nodiscard]] std::int64_t bytesReceived() const { return m_job.bytesReceived(); }

    [[nodiscard]] bool showContentChangesOnly() const { return m_showContentChangesOnly; }
    [[nodiscard]] const std::string& searchText() const { return m_searchText; }
    void setShowContentChangesOnly(bool contentOnly);
    void setSearchText(const std::string& text);

    /// Compares the backup nearest to `target`, if one lies near enough, with the one before it.
    void load(Date target, std::int64_t depth);
    /// Whether a load or a fetch is under way.
    [[nodiscard]] bool isBusy() const { return m_task.isActive() || m_job.isRunning() || !m_fetches.empty(); }
    /// Ends the load. Comparisons of folders go on, even when the model has gone: the next model finds them
    /// in the cache.
    void cancel();

    [[nodiscard]] const ChangeTree& tree() const { return m_tree; }
    /// The list as it is now; its rows are valid until the next load.
    [[nodiscard]] const std::vector<DisplayRow>& visibleRows() const { return m_visibleRows; }
    void toggleExpand(const ChangeRecord& change);
    void fetchChildren(const std::string& path);

signals:
    void backupsChanged();  ///< resolvedFrom, resolvedTo, isOldest
    void progressChanged(); ///< progressText, bytesReceived
    void elapsedChanged();
    void resultChanged(); ///< comparison
    void errorChanged();
    void filterChanged(); ///< showContentChangesOnly, searchText
    void rowsChanged();   ///< visibleRows, tree

private:
    using Self = BackupChangesModel;

    void openCache(Date target, std::int64_t depth);
    void findBackups(Date target, std::int64_t depth);
    void take(const std::vector<DiffEngine::Backup>& backups, Date target, std::int64_t depth);
    void fail(const std::string& message);

    void seedTree();
    void resetTree();
    void fetch(const std::string& path, const std::function<void()>& then);
    void takeVolume(const std::string& volume) { m_volume = volume; }
    void drainPrefetch();
    void updateRows();

    const AppEnvironment m_environment;
    ComparisonJob m_job;
    TaskHandle m_task; ///< opens the cache or finds the backups

    ChangeTree m_tree;
    std::optional<std::string> m_fromRoot;
    std::optional<std::string> m_toRoot;
    std::optional<std::string> m_volume; ///< found at the first fetch
    std::map<std::string, TaskHandle> m_fetches;
    bool m_showContentChangesOnly = true;
    std::string m_searchText;
    std::vector<DisplayRow> m_visibleRows;

    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_loadError, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<Date>, m_resolvedFrom, &Self::backupsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<Date>, m_resolvedTo, &Self::backupsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isOldest, false, &Self::backupsChanged)
};

} // namespace tallyglass
