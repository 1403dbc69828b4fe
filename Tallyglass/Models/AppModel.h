// The root of what the screens show: what the backup engine is doing, the settings, the chosen destination
// and its health, the manifest and the permission. One for the life of the process.
//
// Main thread only, and the main thread never waits here for a child or a file: operations that need one
// return at once and land in the observable fields. They may overlap; each writes its results when it has
// them, and the last one wins. None reports failure to its caller: failures land in `lastError` or are
// dropped as told.

#pragma once

#include "Tallyglass/Models/Task.h"
#include "Tallyglass/Models/Timer.h"
#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/BackupRate.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/RateWindow.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <QObject>
#include <QProperty>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class Workspace;

/// What the model asks of the machine it runs on. A test sets each.
struct AppEnvironment {
    /// This computer.
    explicit AppEnvironment(SystemPaths systemPaths = SystemPaths::standard());

    SystemPaths paths;
    TMUtilRunner runner;       ///< for everything but the manifest
    TMUtilRunner manifestTool; ///< finds the machine directory
    Clock clock;
    TimerFactory makeTimer;         ///< counts through sleep
    Workspace* workspace = nullptr; ///< outlives the model; without one nothing is opened
};

class AppModel : public QObject {
    Q_OBJECT

public:
    /// Seconds between two readings of the status.
    static constexpr double runningInterval = 2;
    static constexpr double idleInterval = 20;

    explicit AppModel(AppEnvironment environment = AppEnvironment(), QObject* parent = nullptr);
    ~AppModel() override;

    // Observable fields. Setting an equal value wakes nobody; any other emits changed().

    [[nodiscard]] const BackupStatus& status() const { return m_status.value(); }
    [[nodiscard]] const std::optional<std::string>& lastError() const { return m_lastError.value(); }
    /// The model is filled by other means than the live system: nobody starts a refresh, the polling or a
    /// recheck on their own account. The model itself doesn't look at it.
    [[nodiscard]] bool isFixtureSession() const { return m_isFixtureSession.value(); }
    [[nodiscard]] const std::optional<BackupRate>& backupRate() const { return m_backupRate.value(); }
    [[nodiscard]] FDAStatus fdaStatus() const { return m_fdaStatus.value(); }
    [[nodiscard]] const std::optional<TMSettings>& settings() const { return m_settings.value(); }
    /// Whether the settings have been set: until then, that there are none says nothing.
    [[nodiscard]] bool hasReadSettings() const { return m_hasReadSettings.value(); }
    [[nodiscard]] bool isRefreshing() const { return m_isRefreshing.value(); }
    [[nodiscard]] const std::optional<std::string>& selectedDestinationID() const {
        return m_selectedDestinationID.value();
    }
    [[nodiscard]] const std::vector<BackupManifestEntry>& manifest() const { return m_manifest.value(); }

    void setStatus(const BackupStatus& status) { m_status.setValue(status); }
    void setLastError(const std::optional<std::string>& text) { m_lastError.setValue(text); }
    void setFixtureSession(bool isFixture) { m_isFixtureSession.setValue(isFixture); }
    void setBackupRate(const std::optional<BackupRate>& rate) { m_backupRate.setValue(rate); }
    void setFdaStatus(FDAStatus status) { m_fdaStatus.setValue(status); }
    void setSettings(const std::optional<TMSettings>& settings) {
        m_settings.setValue(settings);
        m_hasReadSettings.setValue(true);
    }
    void setSelectedDestinationID(const std::optional<std::string>& id) {
        m_selectedDestinationID.setValue(id);
    }
    void setManifest(const std::vector<BackupManifestEntry>& entries) { m_manifest.setValue(entries); }

    // Derived values.

    /// The selected destination, or else the first one; null without any. Valid until the settings change.
    [[nodiscard]] const TMDestination* selectedDestination() const;
    /// Of the selected destination as of now, judged afresh at each call.
    [[nodiscard]] std::optional<BackupHealth> health() const;
    /// The worst of all destinations; healthy when there are none.
    [[nodiscard]] BackupHealth::Level overallHealth() const;

    // The environment, for what works beside the model.

    [[nodiscard]] const AppEnvironment& environment() const { return m_environment; }
    [[nodiscard]] Date now() const { return m_environment.clock(); }
    [[nodiscard]] const SystemPaths& paths() const { return m_environment.paths; }
    [[nodiscard]] const TMUtilRunner& runner() const { return m_environment.runner; }
    [[nodiscard]] const ManifestReader& manifestReader() const { return m_manifestReader; }
    [[nodiscard]] std::unique_ptr<Timer> makeTimer() const { return m_environment.makeTimer(); }

    /// Which session fills the model in the place of the live system; empty for none.
    [[nodiscard]] const std::string& fixtureName() const { return m_fixtureName; }
    void setFixtureName(const std::string& name) { m_fixtureName = name; }

    // Operations.

    /// Reads the status. A failure counts as idle, with its words in `lastError`; a success clears them.
    void refreshStatus();

    /// Reads the status again and again, first after an interval; replaces a loop started before. When a
    /// backup has ended, settings and manifest are read too.
    void startPolling();

    /// Reads everything anew: permission, settings, selection, status, manifest, in this order. Then calls
    /// `then`, if there is one; each part is there as soon as it has been read.
    Q_INVOKABLE void refresh();
    void refresh(std::function<void()> then);

    /// Probes the permission; if it has come, reads everything anew, else the manifest alone.
    void recheckPermission();

    /// Reads the manifest; a failure empties it, without words.
    Q_INVOKABLE void reloadManifest();

    /// Starts or stops a backup and reads the status, or leaves the words of the failure in `lastError`.
    Q_INVOKABLE void startBackup();
    Q_INVOKABLE void stopBackup();

    Q_INVOKABLE void openFullDiskAccessSettings();
    /// Shows this program's own file in the file manager.
    Q_INVOKABLE void revealAppInFinder();

signals:
    void changed(); ///< any observable field

private:
    using Then = std::function<void()>;

    TaskHandle readSettings(Then then);
    TaskHandle readStatus(Then then);
    TaskHandle readManifest(Then then);
    void command(void (TMUtilRunner::*verb)(std::stop_token) const);
    void take(const BackupStatus& status, const std::optional<std::string>& error);
    void probePermission(Then then);
    void scheduleTick();
    void tick(bool wasRunning);
    [[nodiscard]] BackupHealth analyze(const TMDestination& destination) const;

    const AppEnvironment m_environment;
    const ManifestReader m_manifestReader;
    RateWindow m_rateWindow;
    std::unique_ptr<Timer> m_pollTimer; ///< absent until the polling starts
    TaskHandle m_pollTask;
    std::string m_fixtureName;

    Q_OBJECT_BINDABLE_PROPERTY(AppModel, BackupStatus, m_status, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_lastError, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isFixtureSession, false, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<BackupRate>, m_backupRate, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, FDAStatus, m_fdaStatus, FDAStatus::indeterminate,
                                         &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<TMSettings>, m_settings, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_hasReadSettings, false, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isRefreshing, false, &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_selectedDestinationID,
                               &AppModel::changed)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::vector<BackupManifestEntry>, m_manifest, &AppModel::changed)
};

} // namespace tallyglass
