// The model behind the compare screen: it finds the backups, holds the choice of two and the options, runs a
// comparison, offers its rows to the screen, and has the comparisons of all neighbouring backups prepared.
// One for the life of the process.
//
// Main thread only; the cache is opened, backups are listed and comparisons run on the pool. Setting an equal
// value emits nothing.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/BackfillModel.h"
#include "Tallyglass/Models/ComparisonJob.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/ChangeKind.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/DiffEngine.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tallyglass {

struct ComparableBackups;

class DiffModel : public QObject {
    Q_OBJECT

public:
    using BackupChoice = DiffEngine::Backup;

    explicit DiffModel(AppEnvironment environment, QObject* parent = nullptr);
    ~DiffModel() override;

    [[nodiscard]] const std::vector<BackupChoice>& backups() const { return m_backups.value(); }
    [[nodiscard]] bool isLoadingBackups() const { return m_isLoadingBackups.value(); }
    /// Why there is nothing to compare.
    [[nodiscard]] const std::optional<std::string>& unavailableReason() const {
        return m_unavailableReason.value();
    }

    /// The result shown.
    [[nodiscard]] const std::optional<Comparison>& comparison() const { return m_job.comparison(); }
    /// The first rows of it, in the order of their paths.
    [[nodiscard]] const std::vector<ChangeRecord>& changes() const { return m_job.rows(); }
    /// Present exactly while a comparison runs.
    [[nodiscard]] const std::optional<std::string>& progressText() const { return m_job.progressText(); }
    /// For how long the comparison has run, such as "1:15".
    [[nodiscard]] std::string elapsedText() const { return m_job.elapsedText(); }
    [[nodiscard]] const std::optional<std::string>& error() const {
        return m_cacheError.value() ? m_cacheError.value() : m_job.error();
    }

    [[nodiscard]] const std::optional<std::string>& fromPath() const { return m_fromPath.value(); }
    [[nodiscard]] const std::optional<std::string>& toPath() const { return m_toPath.value(); }
    void setFromPath(const std::optional<std::string>& path) { m_fromPath.setValue(path); }
    void setToPath(const std::optional<std::string>& path) { m_toPath.setValue(path); }

    [[nodiscard]] std::int64_t depth() const { return m_depth.value(); }
    [[nodiscard]] bool unlimitedDepth() const { return m_unlimitedDepth.value(); }
    [[nodiscard]] bool compareExtendedAttributes() const { return m_compareExtendedAttributes.value(); }
    void setDepth(std::int64_t depth) { m_depth.setValue(depth); }
    void setUnlimitedDepth(bool isUnlimited) { m_unlimitedDepth.setValue(isUnlimited); }
    void setCompareExtendedAttributes(bool compares) { m_compareExtendedAttributes.setValue(compares); }
    [[nodiscard]] CompareOptions options() const;

    /// The comparisons of all neighbouring backups, under the same options.
    [[nodiscard]] BackfillModel& backfill() { return m_backfill; }
    [[nodiscard]] const BackfillModel& backfill() const { return m_backfill; }
    [[nodiscard]] const std::optional<DiffEngine::BackfillProgress>& backfillProgress() const {
        return m_backfill.progress();
    }
    [[nodiscard]] std::int64_t backfillConcurrency() const { return m_backfill.concurrency(); }

    [[nodiscard]] bool showContentChangesOnly() const { return m_showContentChangesOnly; }
    [[nodiscard]] const std::set<ChangeKind>& kindFilter() const { return m_kindFilter; }
    [[nodiscard]] const std::string& searchText() const { return m_searchText; }
    void setShowContentChangesOnly(bool contentOnly);
    void setKindFilter(const std::set<ChangeKind>& kinds);
    void setSearchText(const std::string& text);

    /// The indices in `changes` of the rows that the filters keep, in their order.
    [[nodiscard]] const std::vector<std::uint32_t>& visibleRows() const { return m_visibleRows; }
    /// The rows themselves, copied.
    [[nodiscard]] std::vector<ChangeRecord> visibleChanges() const;

    /// Two different backups are chosen and nothing runs.
    [[nodiscard]] bool canRun() const;

    /// Opens the cache, if it isn't open, and then lists the backups.
    void prepare();
    void loadBackups();
    /// Chooses two backups by their roots and compares them as soon as the backups are listed, if both are
    /// among them.
    void compareWhenListed(const std::string& from, const std::string& to);
    /// The same for a pair of the backfill, by its options.
    void comparePair(const AdjacentPair& pair);
    /// Compares the two; stops what runs, and drops it. Does nothing before the cache is open or without a
    /// choice.
    void run(bool useCache);
    /// Stops what runs; `error` then says so.
    void cancel() { m_job.cancel(); }

signals:
    void backupsChanged();   ///< backups, isLoadingBackups, unavailableReason
    void selectionChanged(); ///< fromPath, toPath
    void optionsChanged();   ///< depth, unlimitedDepth, compareExtendedAttributes
    void progressChanged();
    void elapsedChanged();
    void resultChanged(); ///< comparison, changes
    void errorChanged();
    void filterChanged(); ///< showContentChangesOnly, kindFilter, searchText
    void rowsChanged();   ///< visibleRows

private:
    using Self = DiffModel;

    void take(const ComparableBackups& found);
    template <typename Value>
    void setFilter(Value& filter, const Value& value);
    void filterRows();

    const AppEnvironment m_environment;
    ComparisonJob m_job;
    BackfillModel m_backfill;
    TaskHandle m_prepareTask;
    TaskHandle m_listTask;
    bool m_showContentChangesOnly = false;
    std::set<ChangeKind> m_kindFilter{allChangeKinds.begin(), allChangeKinds.end()};
    std::string m_searchText;
    std::vector<std::uint32_t> m_visibleRows;
    bool m_runsWhenListed = false;

    Q_OBJECT_BINDABLE_PROPERTY(Self, std::vector<BackupChoice>, m_backups, &Self::backupsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isLoadingBackups, false, &Self::backupsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_unavailableReason, &Self::backupsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_cacheError, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_fromPath, &Self::selectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_toPath, &Self::selectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, std::int64_t, m_depth, 3, &Self::optionsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_unlimitedDepth, false, &Self::optionsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_compareExtendedAttributes, false,
                                         &Self::optionsChanged)
};

} // namespace tallyglass
