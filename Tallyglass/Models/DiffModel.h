// The model behind the compare screen: it finds the backups, holds the choice of two and the options, runs a
// comparison, and offers its rows to the screen.
//
// Main thread only. The cache is opened, backups are listed and comparisons run on the pool. `changed` tells
// of the observable fields and of what `visibleRows` gives.

#pragma once

#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/DiffSession.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Comparison/ChangeKind.h"
#include "TallyglassKit/Comparison/CompareOptions.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tallyglass {

class DiffModel : public QObject {
    Q_OBJECT

public:
    struct BackupChoice {
        std::string path;
        std::optional<Date> date;
        friend bool operator==(const BackupChoice&, const BackupChoice&) = default;
    };

    /// What a screen shows of the model, but for the choices, which follow from the backups.
    struct Shown {
        std::vector<BackupChoice> backups = {};
        std::optional<Comparison> comparison = {};
        std::vector<ChangeRecord> changes = {};
        std::optional<std::string> progressText = {};
        std::optional<std::string> error = {};
        std::optional<std::string> unavailableReason = {};
    };

    static constexpr std::int64_t rowLimit = 20'000; ///< the most rows that are loaded

    /// Opens the user's cache when it is prepared.
    explicit DiffModel(AppEnvironment environment, QObject* parent = nullptr);
    /// Over a cache that is open.
    DiffModel(AppEnvironment environment, std::shared_ptr<DiffSession> session, QObject* parent = nullptr);
    ~DiffModel() override;

    [[nodiscard]] const std::vector<BackupChoice>& backups() const { return m_backups.value(); }
    [[nodiscard]] bool isLoadingBackups() const { return m_isLoadingBackups.value(); }
    /// The result shown.
    [[nodiscard]] const std::optional<Comparison>& comparison() const { return m_comparison.value(); }
    /// The first rows of it, in the order of their paths.
    [[nodiscard]] const std::vector<ChangeRecord>& changes() const { return m_changes.value(); }
    /// Present exactly while a comparison runs.
    [[nodiscard]] const std::optional<std::string>& progressText() const { return m_progressText.value(); }
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }
    /// Why there is nothing to compare.
    [[nodiscard]] const std::optional<std::string>& unavailableReason() const {
        return m_unavailableReason.value();
    }

    [[nodiscard]] const std::optional<std::string>& fromPath() const { return m_fromPath.value(); }
    [[nodiscard]] const std::optional<std::string>& toPath() const { return m_toPath.value(); }
    [[nodiscard]] std::int64_t depth() const { return m_depth.value(); }
    [[nodiscard]] bool unlimitedDepth() const { return m_unlimitedDepth.value(); }
    [[nodiscard]] bool compareExtendedAttributes() const { return m_compareExtendedAttributes.value(); }
    void setFromPath(const std::optional<std::string>& path) { m_fromPath.setValue(path); }
    void setToPath(const std::optional<std::string>& path) { m_toPath.setValue(path); }
    void setDepth(std::int64_t depth) { m_depth.setValue(depth); }
    void setUnlimitedDepth(bool isUnlimited) { m_unlimitedDepth.setValue(isUnlimited); }
    void setCompareExtendedAttributes(bool compares) { m_compareExtendedAttributes.setValue(compares); }
    [[nodiscard]] CompareOptions options() const;

    [[nodiscard]] bool showContentChangesOnly() const { return m_showContentChangesOnly; }
    [[nodiscard]] const std::set<ChangeKind>& kindFilter() const { return m_kindFilter; }
    [[nodiscard]] const std::string& searchText() const { return m_searchText; }
    void setShowContentChangesOnly(bool contentOnly);
    void setKindFilter(const std::set<ChangeKind>& kinds);
    void setSearchText(const std::string& text);

    /// The indices in `changes` of the rows that the filters keep, in their order. Nothing asks the store.
    [[nodiscard]] const std::vector<std::uint32_t>& visibleRows() const { return m_visibleRows; }
    /// The rows themselves, copied.
    [[nodiscard]] std::vector<ChangeRecord> visibleChanges() const;

    /// Two different backups are chosen and nothing runs.
    [[nodiscard]] bool canRun() const;

    /// Opens the cache, if it isn't open, and then lists the backups.
    void prepare();
    void loadBackups();
    /// Compares the two; stops what runs, and drops it. Does nothing before it was prepared or without a
    /// choice.
    void run(bool useCache);
    /// Stops what runs; its end is then told in `error`.
    void cancel();

    /// Fills the model by other means than a machine.
    void show(const Shown& shown);

signals:
    void changed();

private:
    struct Listing;
    struct Result;

    void take(const Listing& listing);
    void take(Result result);
    void apply(const DiffEngine::Progress& progress);
    void filterRows();

    const AppEnvironment m_environment;
    std::shared_ptr<DiffSession> m_session; ///< null until the cache is open
    TaskHandle m_prepareTask;
    TaskHandle m_listTask;
    TaskHandle m_runTask;
    bool m_showContentChangesOnly = false;
    std::set<ChangeKind> m_kindFilter{allChangeKinds.begin(), allChangeKinds.end()};
    std::string m_searchText;
    std::vector<std::uint32_t> m_visibleRows;

    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::vector<BackupChoice>, m_backups, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(DiffModel, bool, m_isLoadingBackups, false, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<Comparison>, m_comparison, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::vector<ChangeRecord>, m_changes, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<std::string>, m_progressText, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<std::string>, m_error, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<std::string>, m_unavailableReason,
                               &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<std::string>, m_fromPath, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(DiffModel, std::optional<std::string>, m_toPath, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(DiffModel, std::int64_t, m_depth, 3, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(DiffModel, bool, m_unlimitedDepth, false, &DiffModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(DiffModel, bool, m_compareExtendedAttributes, false,
                                         &DiffModel::changed)
};

} // namespace tallyglass
