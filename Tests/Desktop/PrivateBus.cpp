#include "Tests/Desktop/PrivateBus.h"

#include <gtest/gtest.h>

#include <QThreadPool>

namespace tallyglass::test {

namespace {

// Connections are known by their names within a process.
const QString standInsName = QStringLiteral("stand-ins ");
const QString programName = QStringLiteral("program ");

} // namespace

PrivateBus::PrivateBus() {
    const auto configuration = m_folder.write(
        "bus.conf", "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN'"
                    " 'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>"
                    "<busconfig><type>session</type><listen>" +
                        address().toStdString() +
                        "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                        "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + QString::fromStdString(configuration.string()),
                    QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                    QStringLiteral("--print-address")});
    EXPECT_TRUE(m_daemon.waitForReadyRead()) << "the message bus doesn't start";
    m_connection = QDBusConnection::connectToBus(address(), standInsName + address());
    EXPECT_TRUE(m_connection.isConnected());
}

PrivateBus::~PrivateBus() {
    // What the test no longer waited for may be about to connect, and a connection mustn't go while another
    // thread is handed it by its name.
    QThreadPool::globalInstance()->waitForDone();
    QDBusConnection::disconnectFromBus(m_connection.name());
    QDBusConnection::disconnectFromBus(programName + address());
    m_daemon.kill();
    m_daemon.waitForFinished();
}

BusConnector PrivateBus::connector() const {
    return [address = address()] { return QDBusConnection::connectToBus(address, programName + address); };
}

QString PrivateBus::address() const {
    return QStringLiteral("unix:path=") + QString::fromStdString((m_folder / "bus").string());
}

} // namespace tallyglass::test
