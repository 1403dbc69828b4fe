// A message bus of a test's own, on which it can stand in for the desktop's services.

#pragma once

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

    [[nodiscard]] QString address() const;
    /// A connection for stand-ins, apart from the program's own.
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
    QDBusConnection m_connection{QString()};
};

} // namespace tallyglass::test
