// Looks whether there is a newer version of the program, once after its start and on request, and says what
// it found. Nothing is downloaded or run: the user gets a link to open.
//
// Main thread only; alerts and workspace outlive it.

#pragma once

#include "Tallyglass/Desktop/Appcast.h"
#include "Tallyglass/Desktop/FeedDownload.h"

#include <QObject>
#include <QProperty>
#include <QSslConfiguration>
#include <QString>
#include <QUrl>
#include <chrono>
#include <memory>
#include <optional>

namespace tallyglass {

class Alerts;
class Workspace;

struct UpdaterOptions {
    QUrl feed;       ///< without one of HTTPS, checks aren't possible
    QString version; ///< of this program
    FeedDownload::Limits limits = {};
    /// Absent for the system's; making one loads the library for it.
    std::optional<QSslConfiguration> tls = std::nullopt;
    std::chrono::milliseconds delay = std::chrono::seconds(5); ///< from start() to the first check

    /// As this program was built.
    [[nodiscard]] static UpdaterOptions ofThisBuild();
};

class UpdaterController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

public:
    UpdaterController(UpdaterOptions options, Alerts& alerts, Workspace& workspace,
                      QObject* parent = nullptr);
    ~UpdaterController() override;

    /// False while a check runs, and in a program without a feed.
    [[nodiscard]] bool canCheckForUpdates() const { return m_canCheckForUpdates; }

    /// Checks a little later, so that the program's start isn't slowed, and says something only if there is a
    /// newer version.
    void start();

    /// Checks now, and says in any case how it went. Does nothing while a check isn't possible.
    Q_INVOKABLE void checkForUpdates();

    /// Tells of a newer version, as a check does that finds one.
    void offer(const AppcastItem& item);

signals:
    void canCheckForUpdatesChanged();

private:
    enum class Manner { quiet, asked };

    void check(Manner manner);
    void take(const QByteArray& feed, Manner manner);
    void fail(const QString& reason, Manner manner);
    void endCheck();

    const UpdaterOptions m_options;
    Alerts& m_alerts;
    Workspace& m_workspace;
    std::unique_ptr<FeedDownload> m_download; ///< while a check runs
    Q_OBJECT_BINDABLE_PROPERTY(UpdaterController, bool, m_canCheckForUpdates,
                               &UpdaterController::canCheckForUpdatesChanged)
};

} // namespace tallyglass
