#include "Tallyglass/Models/AppModel.h"

#include "Tallyglass/Desktop/Workspace.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"

#include <QCoreApplication>
#include <QUrl>
#include <algorithm>

namespace tallyglass {

AppModel::AppModel(AppEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)),
      m_manifestReader(m_environment.runner, m_environment.paths), m_diagnostics(m_environment.makeTimer),
      m_benchmark(m_environment.makeTimer) {
    for (const auto topic : {&JobProgress::textChanged, &JobProgress::elapsedChanged}) {
        connect(&m_diagnostics, topic, this, &AppModel::diagnosticsChanged);
        connect(&m_benchmark, topic, this, &AppModel::benchmarkChanged);
    }
}

AppModel::~AppModel() = default;

const TMDestination* AppModel::selectedDestination() const {
    const auto& current = settings();
    if (!current || current->destinations.empty())
        return nullptr;
    const auto& destinations = current->destinations;
    if (selectedDestinationID()) {
        const auto selected = std::ranges::find(destinations, *selectedDestinationID(), &TMDestination::id);
        if (selected != destinations.end())
            return &*selected;
    }
    return &destinations.front();
}

std::optional<BackupHealth> AppModel::health() const {
    const TMDestination* const destination = selectedDestination();
    if (!destination)
        return std::nullopt;
    return analyze(*destination);
}

BackupHealth::Level AppModel::overallHealth() const {
    auto worst = BackupHealth::Level::healthy;
    if (settings()) {
        for (const auto& destination : settings()->destinations)
            worst = std::max(worst, analyze(destination).level());
    }
    return worst;
}

BackupHealth AppModel::analyze(const TMDestination& destination) const {
    return BackupHealth::analyze(destination, now(), BackupHealth::defaultSuccessWindow,
                                 BackupHealth::defaultGapTolerance);
}

void AppModel::refreshStatus() {
    readStatus([] {}).detach();
}

TaskHandle AppModel::readStatus(Then then) {
    return startTask(
        this, [runner = m_environment.runner](TaskContext& task) { return runner.status(task.stopToken()); },
        [this, then](const BackupStatus& status) {
            take(status, std::nullopt);
            then();
        },
        [this, then](const std::exception_ptr& failure) {
            take(BackupStatus::idle, describe(failure));
            then();
        });
}

void AppModel::take(const BackupStatus& status, const std::optional<std::string>& error) {
    const bool hasEnded = this->status().isRunning && !status.isRunning;
    m_rateWindow.take(status, now());
    setStatus(status);
    setLastError(error);
    m_backupRate.setValue(m_rateWindow.rate());
    if (hasEnded)
        emit backupEnded();
}

void AppModel::reloadManifest() {
    readManifest([] {}).detach();
}

TaskHandle AppModel::readManifest(Then then) {
    return startTask(
        this, [reader = manifestReader()](TaskContext& task) { return reader.read(task.stopToken()); },
        [this, then](const std::vector<BackupManifestEntry>& entries) {
            setManifest(entries);
            then();
        },
        [this, then](const std::exception_ptr&) {
            setManifest({});
            then();
        });
}

void AppModel::startPolling() {
    m_pollTask = {};
    if (!m_pollTimer)
        m_pollTimer = makeTimer();
    scheduleTick();
}

void AppModel::scheduleTick() {
    const bool wasRunning = status().isRunning;
    m_pollTimer->disconnect(this);
    connect(m_pollTimer.get(), &Timer::timeout, this, [this, wasRunning] { tick(wasRunning); });
    m_pollTimer->start(wasRunning ? runningInterval : idleInterval);
}

void AppModel::tick(bool wasRunning) {
    m_pollTask = readStatus([this, wasRunning] {
        const bool justEnded = wasRunning && !status().isRunning;
        if (!justEnded)
            return scheduleTick();
        m_pollTask = readSettings([this] { m_pollTask = readManifest([this] { scheduleTick(); }); });
    });
}

void AppModel::refresh() {
    refresh({});
}

void AppModel::refresh(std::function<void()> then) {
    const auto finish = [this, then = std::move(then)] {
        m_isRefreshing.setValue(false);
        if (then)
            then();
    };
    const auto takeSettings = [this, finish] {
        if (!selectedDestinationID() && settings() && !settings()->destinations.empty())
            setSelectedDestinationID(settings()->destinations.front().id);
        readStatus([this, finish] { readManifest(finish).detach(); }).detach();
    };
    m_isRefreshing.setValue(true);
    probePermission([this, takeSettings] { readSettings(takeSettings).detach(); });
}

void AppModel::recheckPermission() {
    probePermission([this, before = fdaStatus()] {
        if (before != FDAStatus::granted && fdaStatus() == FDAStatus::granted)
            refresh();
        else
            reloadManifest();
    });
}

void AppModel::probePermission(Then then) {
    const auto take = [this, then = std::move(then)](FDAStatus access) {
        setFdaStatus(access);
        then();
    };
    startTask(
        this, [probe = m_environment.probeAccess](TaskContext&) { return probe(); }, take,
        [take](const std::exception_ptr&) { take(FDAStatus::indeterminate); })
        .detach();
}

TaskHandle AppModel::readSettings(Then then) {
    const auto take = [this, then = std::move(then)](const std::optional<TMSettings>& settings) {
        setSettings(settings);
        then();
    };
    return startTask(
        this, [paths = paths()](TaskContext&) { return TimeMachinePreferences().read(paths); }, take,
        [take](const std::exception_ptr&) { take(std::nullopt); });
}

void AppModel::startBackup() {
    command(&TMUtilRunner::startBackup);
}

void AppModel::stopBackup() {
    command(&TMUtilRunner::stopBackup);
}

void AppModel::command(void (TMUtilRunner::*verb)(std::stop_token) const) {
    startTask(
        this, [runner = m_environment.runner, verb](TaskContext& task) { (runner.*verb)(task.stopToken()); },
        [this] { refreshStatus(); },
        [this](const std::exception_ptr& failure) { setLastError(describe(failure)); })
        .detach();
}

void AppModel::openFullDiskAccessSettings() {
    const auto address = FullDiskAccessProbe::settingsURL;
    if (m_environment.workspace)
        m_environment.workspace->openUrl(QUrl(QString::fromUtf8(address.data(), std::ssize(address))));
}

void AppModel::revealAppInFinder() {
    if (m_environment.workspace)
        m_environment.workspace->reveal(QCoreApplication::applicationFilePath().toStdString());
}

} // namespace tallyglass
