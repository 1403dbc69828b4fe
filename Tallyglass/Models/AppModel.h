// The root of what the screens show: what the backup engine is doing, the settings, the chosen destination
// and its health, the manifest and the permission, and the two long jobs of the dashboard. One for the life
// of the process.
//
// Main thread only, and it never waits here for a child or a file: operations that need one return at once
// and their results land in the observable fields. They may overlap; each writes its results when it has
// them, and the last one wins. None reports failure to its caller: failures land in `lastError` or are
// dropped, as said for each.

#pragma once

#include "Tallyglass/Models/AppEnvironment.h"
#include "Tallyglass/Models/JobProgress.h"
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
#include "TallyglassKit/Insight/CompareBenchmark.h"
#include "TallyglassKit/Insight/DiagnosticsDump.h"
#include "TallyglassKit/Platform/Clock.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class AppModel : public QObject {
    Q_OBJECT

public:
    /// Seconds between two readings of the status.
    static constexpr double runningInterval = 2;
    static constexpr double idleInterval = 20;

    explicit AppModel(AppEnvironment environment = AppEnvironment(), QObject* parent = nullptr);
    ~AppModel() override;

    // Observable fields, each with the signal of its topic. Setting an equal value emits nothing.

    [[nodiscard]] const BackupStatus& status() const { return m_status.value(); }
    [[nodiscard]] const std::optional<std::string>& lastError() const { return m_lastError.value(); }
    /// The model is filled by other means than the live system, so the application starts no refresh, polling
    /// or recheck on its own. The model itself doesn't look at it.
    [[nodiscard]] bool isFixtureSession() const { return m_isFixtureSession.value(); }
    [[nodiscard]] const std::optional<BackupRate>& backupRate() const { return m_backupRate.value(); }
    [[nodiscard]] FDAStatus fdaStatus() const { return m_fdaStatus.value(); }
    [[nodiscard]] const std::optional<TMSettings>& settings() const { return m_settings.value(); }
    /// Whether the settings have been read: before that their absence means nothing.
    [[nodiscard]] bool hasReadSettings() const { return m_hasReadSettings.value(); }
    [[nodiscard]] bool isRefreshing() const { return m_isRefreshing.value(); }
    [[nodiscard]] const std::optional<std::string>& selectedDestinationID() const {
        return m_selectedDestinationID.value();
    }
    [[nodiscard]] const std::vector<BackupManifestEntry>& manifest() const { return m_manifest.value(); }

    /// What a diagnostics capture is at; present exactly while one runs.
    [[nodiscard]] const std::optional<std::string>& diagnosticsProgress() const {
        return m_diagnostics.text();
    }
    /// Why the last capture failed.
    [[nodiscard]] const std::optional<std::string>& diagnosticsError() const {
        return m_diagnosticsError.value();
    }
    /// Of the last capture that ran to its end.
    [[nodiscard]] const std::optional<DiagnosticsDump>& lastDump() const { return m_lastDump.value(); }
    // The same of a benchmark.
    [[nodiscard]] const std::optional<std::string>& benchmarkProgress() const { return m_benchmark.text(); }
    [[nodiscard]] const std::optional<std::string>& benchmarkError() const {
        return m_benchmarkError.value();
    }
    [[nodiscard]] const std::vector<BenchmarkResult>& benchmarkResults() const {
        return m_benchmarkResults.value();
    }
    /// Whether the report on these results could be saved.
    [[nodiscard]] bool isBenchmarkSaved() const { return m_isBenchmarkSaved.value(); }
    /// Such as "1:15".
    [[nodiscard]] std::string diagnosticsElapsed() const { return m_diagnostics.elapsedText(); }
    [[nodiscard]] std::string benchmarkElapsed() const { return m_benchmark.elapsedText(); }

    void setStatus(const BackupStatus& status) { m_status.setValue(status); }
    void setLastError(const std::optional<std::string>& text) { m_lastError.setValue(text); }
    void setFixtureSession(bool isFixture) { m_isFixtureSession.setValue(isFixture); }
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
    /// Of the selected destination, as of now; computed at each call.
    [[nodiscard]] std::optional<BackupHealth> health() const;
    /// The worst of all destinations; healthy when there are none.
    [[nodiscard]] BackupHealth::Level overallHealth() const;

    // The environment, for other parts of the program.

    [[nodiscard]] const AppEnvironment& environment() const { return m_environment; }
    [[nodiscard]] Date now() const { return m_environment.clock(); }
    [[nodiscard]] const SystemPaths& paths() const { return m_environment.paths; }
    [[nodiscard]] const ManifestReader& manifestReader() const { return m_manifestReader; }
    [[nodiscard]] std::unique_ptr<Timer> makeTimer() const { return m_environment.makeTimer(); }

    // Operations.

    /// Reads the status. A failure counts as idle, with its text in `lastError`; a success clears that.
    void refreshStatus();

    /// Reads the status repeatedly, first after an interval; replaces an earlier loop. When a backup has
    /// ended, it reads settings and manifest too.
    void startPolling();

    /// Reloads everything: permission, settings, selection, status, manifest, in this order. Each is
    /// published as soon as it has been read. Calls `then`, if there is one, at the end.
    Q_INVOKABLE void refresh();
    void refresh(std::function<void()> then);

    /// Probes the permission; reloads everything if it has just been granted, else the manifest alone.
    void recheckPermission();

    /// Reads the manifest; a failure empties it and leaves `lastError` alone.
    Q_INVOKABLE void reloadManifest();

    /// Starts or stops a backup and then reads the status, or puts the text of the failure in `lastError`.
    Q_INVOKABLE void startBackup();
    Q_INVOKABLE void stopBackup();

    /// Saves what tmutil says to the desktop and shows the folder in the file manager; a failure goes to
    /// `lastError` too. Stops and drops a capture that runs.
    void captureDiagnostics();
    /// Stops the capture and drops it. The earlier dump stays.
    void cancelDiagnostics();

    /// Measures what comparisons cost and saves the report beside the diagnostics; a failure goes to
    /// `lastError` too. Stops and drops a benchmark that runs.
    void runBenchmark(std::optional<std::int64_t> depth);
    /// Stops the benchmark and drops it. The earlier results stay.
    void cancelBenchmark();

    Q_INVOKABLE void openFullDiskAccessSettings();
    /// Shows this program in the file manager.
    Q_INVOKABLE void revealAppInFinder();

signals:
    void statusChanged(); ///< status, backupRate
    void errorChanged();
    void settingsChanged(); ///< settings, hasReadSettings, selectedDestinationID
    void manifestChanged();
    void permissionChanged();
    void refreshingChanged();
    void fixtureSessionChanged();
    void diagnosticsChanged(); ///< what begins with diagnostics, lastDump
    void benchmarkChanged();   ///< what begins with benchmark, isBenchmarkSaved
    void backupEnded();        ///< a reading of the status has noticed

private:
    using Then = std::function<void()>;

    struct Benchmark {
        std::vector<BenchmarkResult> results;
        bool isSaved;
    };

    TaskHandle readSettings(Then then);
    TaskHandle readStatus(Then then);
    TaskHandle readManifest(Then then);
    void command(void (TMUtilRunner::*verb)(std::stop_token) const);
    void take(const BackupStatus& status, const std::optional<std::string>& error);
    void probePermission(Then then);
    void tellProbe(const std::string& label) { m_diagnostics.setText(label); }
    void tellCondition(const std::string& text);
    void scheduleTick();
    void tick(bool wasRunning);
    [[nodiscard]] BackupHealth analyze(const TMDestination& destination) const;

    const AppEnvironment m_environment;
    const ManifestReader m_manifestReader;
    RateWindow m_rateWindow;
    std::unique_ptr<Timer> m_pollTimer; ///< absent until the polling starts
    TaskHandle m_pollTask;
    JobProgress m_diagnostics;
    JobProgress m_benchmark;
    TaskHandle m_diagnosticsTask;
    TaskHandle m_benchmarkTask;

    Q_OBJECT_BINDABLE_PROPERTY(AppModel, BackupStatus, m_status, &AppModel::statusChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_lastError, &AppModel::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isFixtureSession, false,
                                         &AppModel::fixtureSessionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<BackupRate>, m_backupRate, &AppModel::statusChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, FDAStatus, m_fdaStatus, FDAStatus::indeterminate,
                                         &AppModel::permissionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<TMSettings>, m_settings, &AppModel::settingsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_hasReadSettings, false, &AppModel::settingsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isRefreshing, false, &AppModel::refreshingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_selectedDestinationID,
                               &AppModel::settingsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::vector<BackupManifestEntry>, m_manifest,
                               &AppModel::manifestChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_diagnosticsError,
                               &AppModel::diagnosticsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<std::string>, m_benchmarkError,
                               &AppModel::benchmarkChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<DiagnosticsDump>, m_lastDump,
                               &AppModel::diagnosticsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::vector<BenchmarkResult>, m_benchmarkResults,
                               &AppModel::benchmarkChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isBenchmarkSaved, false,
                                         &AppModel::benchmarkChanged)
};

} // namespace tallyglass
