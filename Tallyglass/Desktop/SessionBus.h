// The message bus of the user's desktop, reached without waiting for it.

#pragma once

#include <QDBusConnection>
#include <QFutureWatcher>
#include <functional>

namespace tallyglass {

/// Connects to a bus and waits for it; unconnected if there is none. Must be callable from any thread.
using BusConnector = std::function<QDBusConnection()>;

/// The user's session bus, as this process's environment has it. None is ever started.
[[nodiscard]] QDBusConnection connectToSessionBus();

/// Runs `connect` on another thread.
[[nodiscard]] QFuture<QDBusConnection> connectInBackground(BusConnector connect);

/// Calls `use` with the bus on the thread of `receiver`, unless that has gone by then.
template <typename Use>
void withBus(QObject* receiver, const BusConnector& connect, Use use) {
    auto* watcher = new QFutureWatcher<QDBusConnection>(receiver);
    QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, use = std::move(use)] {
        watcher->deleteLater();
        use(watcher->result());
    });
    watcher->setFuture(connectInBackground(connect));
}

} // namespace tallyglass
