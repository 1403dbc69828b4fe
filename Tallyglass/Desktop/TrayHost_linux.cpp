#include "Tallyglass/Desktop/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace tallyglass {

namespace {

const auto service = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto path = QStringLiteral("/StatusNotifierWatcher");
const auto interface = service;

} // namespace

TrayHost::TrayHost(const BusConnector& bus, QObject* parent) : QObject(parent) {
    withBus(this, bus, [this](const QDBusConnection& connection) { watch(connection); });
}

void TrayHost::watch(const QDBusConnection& bus) {
    m_bus = bus;
    if (!m_bus.isConnected())
        return;
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(service);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::ask);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setAvailable(false); });
    for (const auto& change :
         {QStringLiteral("StatusNotifierHostRegistered"), QStringLiteral("StatusNotifierHostUnregistered")})
        m_bus.connect(service, path, interface, change, this, SLOT(ask()));
    ask();
}

// The service alone shows nothing; what counts is whether a panel that draws items has announced itself to
// it.
void TrayHost::ask() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << interface << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    m_question = std::make_unique<QDBusPendingCallWatcher>(m_bus.asyncCall(call));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this, [this] {
        const QDBusPendingReply<QDBusVariant> reply = *m_question;
        m_question.release()->deleteLater(); // it is telling us just now
        setAvailable(reply.isValid() && reply.value().variant().toBool());
    });
}

void TrayHost::setAvailable(bool available) {
    if (available == m_isAvailable)
        return;
    m_isAvailable = available;
    emit availableChanged();
}

} // namespace tallyglass
