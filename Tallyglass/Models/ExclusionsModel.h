// The model behind the exclusions screen: the items that the user watches, whether backups leave them out and
// why, and the paths that Time Machine skips by its own settings. The system can't list all excluded items,
// so the user's settings hold the watched paths; every operation reads them anew.
//
// Main thread only; settings and preferences are read and written and tmutil is run on the pool. Calls may
// overlap: changes of the list are made one after the other, as are changes of exclusions, and the result of
// the last refresh counts. A change that has begun is finished even if the model goes.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/Task.h"
#include "TallyglassKit/Insight/ExclusionManager.h"
#include "TallyglassKit/Insight/ExclusionStatus.h"

#include <QObject>
#include <QProperty>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class ExclusionsModel : public QObject {
    Q_OBJECT

public:
    /// Of the watched paths in the user's settings.
    static constexpr std::string_view watchedPathsKey = "WatchedExclusionPaths";

    explicit ExclusionsModel(AppEnvironment environment, QObject* parent = nullptr);
    ~ExclusionsModel() override;

    /// The watched paths, in the order of the settings.
    [[nodiscard]] const std::vector<ExclusionStatus>& statuses() const { return m_statuses.value(); }
    /// A refresh has ended, so that `statuses` are known.
    [[nodiscard]] bool isLoaded() const { return m_isLoaded.value(); }
    [[nodiscard]] const std::vector<std::string>& skipPaths() const { return m_skipPaths.value(); }
    /// Why the last change failed.
    [[nodiscard]] const std::optional<std::string>& error() const { return m_error.value(); }
    /// The item that `error` is about; absent if the list of watched paths couldn't be saved.
    [[nodiscard]] const std::optional<std::string>& failedPath() const { return m_failedPath.value(); }
    /// A refresh or a change is running.
    [[nodiscard]] bool isBusy() const { return m_isBusy.value(); }
    /// Whether the item will be excluded, while a change of that is under way.
    [[nodiscard]] std::optional<bool> pendingExclusion(std::string_view path) const;

    void refresh();
    /// Adds the items that aren't on the list, and sorts it.
    void addPaths(const std::vector<std::filesystem::path>& items);
    /// Removes a path from the list. Doesn't change its exclusion.
    void stopTracking(const std::string& path);
    void setExcluded(bool excluded, const std::string& path);

signals:
    void statusesChanged(); ///< statuses, isLoaded, pendingExclusion
    void skipPathsChanged();
    void errorChanged(); ///< error, failedPath
    void busyChanged();

private:
    using Self = ExclusionsModel;
    using Edit = std::function<void(std::vector<std::string>&)>;

    struct Change {
        std::string path;
        bool excludes;
        bool isMade; ///< the statuses don't show it yet
    };

    void takeSkipPaths(std::vector<std::string> paths) { m_skipPaths.setValue(std::move(paths)); }
    void endRefresh();
    void edit(Edit edit);
    void startEdits();
    void endEdits();
    void startChange();
    void fail(const std::exception_ptr& failure, const std::optional<std::string>& path);
    void updateBusy();

    const AppEnvironment m_environment;
    const ExclusionManager m_manager;
    std::vector<Edit> m_edits;     ///< that haven't begun
    std::vector<Change> m_changes; ///< in their order; the first that isn't made is running
    TaskHandle m_refreshTask;
    TaskHandle m_editTask;
    TaskHandle m_changeTask;

    Q_OBJECT_BINDABLE_PROPERTY(Self, std::vector<ExclusionStatus>, m_statuses, &Self::statusesChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isLoaded, false, &Self::statusesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::vector<std::string>, m_skipPaths, &Self::skipPathsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_error, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, std::optional<std::string>, m_failedPath, &Self::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isBusy, false, &Self::busyChanged)
};

} // namespace tallyglass
