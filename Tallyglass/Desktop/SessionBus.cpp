#include "Tallyglass/Desktop/SessionBus.h"

#include <QFileInfo>
#include <QPromise>
#include <QThreadPool>
#include <memory>

namespace tallyglass {

QDBusConnection connectToSessionBus() {
    // Without either, the bus library would start a bus of its own.
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool isThere =
        !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
        (!runtimeFolder.isEmpty() && QFileInfo::exists(runtimeFolder + QStringLiteral("/bus")));
    if (!isThere)
        return QDBusConnection(QString());
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tallyglass"));
}

QFuture<QDBusConnection> connectInBackground(BusConnector connect) {
    auto promise = std::make_shared<QPromise<QDBusConnection>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, connect = std::move(connect)] {
        promise->addResult(connect());
        promise->finish();
    });
    return promise->future();
}

} // namespace tallyglass
