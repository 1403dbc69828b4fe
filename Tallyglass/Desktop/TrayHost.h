// Whether the desktop has a tray in which programs can stay when their window is closed.
//
// Main thread only. Nothing waits: until the desktop has answered there is no tray.

#pragma once

#include "Tallyglass/Desktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <memory>

namespace tallyglass {

class TrayHost : public QObject {
    Q_OBJECT

public:
    /// The tray is asked for over this bus; without one there never is any.
    explicit TrayHost(const BusConnector& bus = connectToSessionBus, QObject* parent = nullptr);

    [[nodiscard]] bool isAvailable() const { return m_isAvailable; }

signals:
    void availableChanged();

private slots:
    void ask();

private:
    void watch(const QDBusConnection& bus);
    void setAvailable(bool available);

    QDBusConnection m_bus{QString()}; ///< unconnected at first
    QDBusServiceWatcher m_watcher;
    std::unique_ptr<QDBusPendingCallWatcher> m_question; ///< while it isn't answered
    bool m_isAvailable = false;
};

} // namespace tallyglass
