// A message bus of a test's own, on which it can stand in for the desktop's services.

#pragma once

#include "Tallyglass/Desktop/SessionBus.h"
#include "Tests/Support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace tallyglass::test {

class PrivateBus {
public:
    /// Starts the bus; fails the test when it doesn't start.
    PrivateBus();
    ~PrivateBus();

    /// How the program reaches the bus.
    [[nodiscard]] BusConnector connector() const;
    /// The connection of the stand-ins.
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

private:
    [[nodiscard]] QString address() const;

    TemporaryFolder m_folder;
    QProcess m_daemon;
    QDBusConnection m_connection{QString()};
};

/// Where no bus can be reached.
[[nodiscard]] inline QDBusConnection noBus() {
    return QDBusConnection(QString());
}

} // namespace tallyglass::test
