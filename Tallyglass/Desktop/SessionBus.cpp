#include "Tallyglass/Desktop/SessionBus.h"

#include <QFileInfo>
#include <QPromise>
#include <QThreadPool>

namespace tallyglass {

QString sessionBusAddress() {
    // Without either, the bus library would start a bus of its own.
    if (const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return address;
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = runtimeFolder + QStringLiteral("/bus");
    if (!runtimeFolder.isEmpty() && QFileInfo::exists(socket))
        return QStringLiteral("unix:path=") + socket;
    return {};
}

QFuture<QDBusConnection> connectToBus(const QString& address) {
    auto promise = std::make_shared<QPromise<QDBusConnection>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, address] {
        promise->addResult(address.isEmpty() ? QDBusConnection(QString())
                                             : QDBusConnection::connectToBus(
                                                   address, QStringLiteral("tallyglass ") + address));
        promise->finish();
    });
    return promise->future();
}

} // namespace tallyglass
