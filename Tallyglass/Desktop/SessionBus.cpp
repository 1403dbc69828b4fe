#include "Tallyglass/Desktop/SessionBus.h"

#include <QFileInfo>

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

} // namespace tallyglass
