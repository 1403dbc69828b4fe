#include "Tallyglass/Desktop/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
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
    auto* watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::ask);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setAvailable(false); });
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
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
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
