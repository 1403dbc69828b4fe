#include "Tallyglass/Desktop/UpdaterController.h"

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Workspace.h"

#include <QTimer>

namespace tallyglass {

namespace {

#ifdef Q_OS_MACOS
const QString thisSystem = QStringLiteral("macos");
#else
const QString thisSystem = QStringLiteral("linux");
#endif

bool isUsable(const QUrl& feed) {
    return feed.isValid() && feed.scheme() == QStringLiteral("https") && !feed.host().isEmpty();
}

} // namespace

UpdaterOptions UpdaterOptions::ofThisBuild() {
    return {.feed = QUrl(QStringLiteral(TALLYGLASS_UPDATE_FEED), QUrl::StrictMode),
            .version = QStringLiteral(TALLYGLASS_VERSION)};
}

UpdaterController::UpdaterController(UpdaterOptions options, Alerts& alerts, Workspace& workspace,
                                     QObject* parent)
    : QObject(parent), m_options(std::move(options)), m_alerts(alerts), m_workspace(workspace) {
    m_canCheckForUpdates = isUsable(m_options.feed);
}

UpdaterController::~UpdaterController() = default;

void UpdaterController::start() {
    if (canCheckForUpdates())
        QTimer::singleShot(m_options.delay, this, [this] { check(Manner::quiet); });
}

void UpdaterController::checkForUpdates() {
    check(Manner::asked);
}

void UpdaterController::check(Manner manner) {
    if (!canCheckForUpdates())
        return;
    m_canCheckForUpdates = false;
    const auto tls = m_options.tls ? *m_options.tls : QSslConfiguration::defaultConfiguration();
    m_download = std::make_unique<FeedDownload>(m_options.feed, m_options.limits, tls);
    connect(m_download.get(), &FeedDownload::finished, this,
            [this, manner](const QByteArray& feed) { take(feed, manner); });
    connect(m_download.get(), &FeedDownload::failed, this,
            [this, manner](const QString& reason) { fail(reason, manner); });
}

void UpdaterController::take(const QByteArray& feed, Manner manner) {
    const auto items = parseAppcast(feed, thisSystem);
    if (!items) {
        fail(tr("The server’s answer isn’t a list of versions."), manner);
        return;
    }
    endCheck();
    if (const auto newest = newestAfter(m_options.version, *items))
        offer(*newest);
    else if (manner == Manner::asked)
        m_alerts.show({.title = tr("Tallyglass is up to date"),
                       .text = tr("Version %1 is the newest there is.").arg(m_options.version)});
}

void UpdaterController::fail(const QString& reason, Manner manner) {
    endCheck();
    if (manner == Manner::asked)
        m_alerts.show(
            {.kind = Alert::Kind::warning, .title = tr("Couldn’t check for updates"), .text = reason});
}

void UpdaterController::offer(const AppcastItem& item) {
    Alert alert{.title = tr("Tallyglass %1 is available").arg(item.name),
                .text = tr("You have version %1.").arg(m_options.version)};
    if (item.link.isEmpty()) {
        m_alerts.show(alert);
        return;
    }
    alert.text += u' ' + tr("The download opens in your browser, from %1.").arg(item.link.host());
    alert.confirmText = tr("Open Download");
    alert.cancelText = tr("Later");
    m_alerts.show(alert, this, [this, link = item.link](bool confirmed) {
        if (confirmed)
            m_workspace.openUrl(link);
    });
}

void UpdaterController::endCheck() {
    m_download.release()->deleteLater(); // it is telling us just now
    m_canCheckForUpdates = true;
}

} // namespace tallyglass
