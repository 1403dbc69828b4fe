// Whether the desktop has a tray in which programs can stay when their window is closed.
//
// Main thread only. Nothing waits: until the desktop has answered there is no tray.

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace tallyglass {

class TrayHost : public QObject {
    Q_OBJECT

public:
    /// `busAddress` is where the tray is asked for; without a bus there never is one.
    explicit TrayHost(const QString& busAddress, QObject* parent = nullptr);

    [[nodiscard]] bool isAvailable() const { return m_isAvailable; }

signals:
    void availableChanged();

private slots:
    void ask();

private:
    void watch(const QDBusConnection& bus);
    void setAvailable(bool available);

    QDBusConnection m_bus{QString()}; ///< unconnected at first
    bool m_isAvailable = false;
};

} // namespace tallyglass
