// How the user wants programs to look, followed while the program runs: from the desktop's settings portal
// where there is one, else from the brightness of the application's palette.
//
// Main thread only, and never waits for the portal: until it answers, the palette speaks.

#pragma once

#include "Tallyglass/Desktop/Appearance.h"
#include "Tallyglass/Desktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QObject>
#include <QProperty>
#include <optional>

namespace tallyglass {

class DesktopSettings : public QObject {
    Q_OBJECT

public:
    /// The portal is asked over this bus.
    explicit DesktopSettings(const BusConnector& bus = connectToSessionBus, QObject* parent = nullptr);

    [[nodiscard]] const Appearance& appearance() const { return m_appearance; }
    [[nodiscard]] bool isDark() const { return appearance().isDark; }
    [[nodiscard]] bool reducesMotion() const { return appearance().reducesMotion; }
    [[nodiscard]] bool differentiatesWithoutColor() const { return appearance().differentiatesWithoutColor; }
    [[nodiscard]] double textScale() const { return appearance().textScale; }

    /// Shows this appearance instead of the desktop's, until it is absent again.
    void setOverride(std::optional<Appearance> appearance);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed(); ///< the appearance differs from before

private slots:
    void takeSetting(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void follow(QDBusConnection bus);
    void takeAll(const QDBusPendingCall& answer);
    void update();

    PortalSettings m_portal;
    std::optional<Appearance> m_override;
    Appearance m_appearance;
};

} // namespace tallyglass
