// The message bus of the user's desktop, reached without waiting for it.

#pragma once

#include <QDBusConnection>
#include <QFutureWatcher>
#include <QString>

namespace tallyglass {

/// Where the user's session bus listens, from this process's environment; empty if there is none. A bus is
/// never started for it.
[[nodiscard]] QString sessionBusAddress();

/// Connects to the bus on another thread. The connection is shared within the program, and comes unconnected
/// if there is no bus at the address.
[[nodiscard]] QFuture<QDBusConnection> connectToBus(const QString& address);

/// Calls `use` with the connected bus on the thread of `receiver`, unless that has gone by then.
template <typename Use>
void withBus(QObject* receiver, const QString& address, Use use) {
    auto* watcher = new QFutureWatcher<QDBusConnection>(receiver);
    QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, use = std::move(use)] {
        watcher->deleteLater();
        use(watcher->result());
    });
    watcher->setFuture(connectToBus(address));
}

} // namespace tallyglass
