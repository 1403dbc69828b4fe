#include "Tallyglass/Desktop/DesktopSettings.h"

#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace tallyglass {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

using AllSettings = QMap<QString, QVariantMap>;

QDBusMessage readAll() {
    auto message =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
    message << PortalSettings::namespaces();
    return message;
}

Appearance paletteAppearance() {
    const QPalette palette = QGuiApplication::palette();
    Appearance appearance;
    appearance.isDark =
        palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
    return appearance;
}

} // namespace

DesktopSettings::DesktopSettings(const BusConnector& bus, QObject* parent)
    : QObject(parent), m_appearance(paletteAppearance()) {
    qDBusRegisterMetaType<AllSettings>();
    qApp->installEventFilter(this);
    // Asked while the program still starts, the portal answers before the first frame, which then needs no
    // correction.
    const auto ask = [](const QDBusConnection& connection) {
        return std::pair(connection, connection.asyncCall(readAll()));
    };
    withBus(this, bus, ask, [this](const std::pair<QDBusConnection, QDBusPendingCall>& asked) {
        const auto& [connection, answer] = asked;
        if (!connection.isConnected())
            return;
        if (answer.isFinished())
            takeAll(answer);
        follow(connection);
    });
}

void DesktopSettings::setOverride(std::optional<Appearance> appearance) {
    m_override = appearance;
    update();
}

bool DesktopSettings::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        update();
    return false;
}

void DesktopSettings::follow(QDBusConnection bus) {
    qRegisterMetaType<QDBusVariant>(); // the slot's parameters are looked up by their names
    // Without a sender's name: to look up who owns it would wait for the bus.
    bus.connect(QString(), portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(takeSetting(QString, QString, QDBusVariant)));

    // Again, for what changed before that.
    auto* call = new QDBusPendingCallWatcher(bus.asyncCall(readAll()), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        takeAll(*call);
    });
}

void DesktopSettings::takeAll(const QDBusPendingCall& answer) {
    const QDBusPendingReply<AllSettings> reply = answer;
    if (!reply.isValid())
        return;
    const AllSettings settings = reply.value();
    for (auto space = settings.begin(); space != settings.end(); ++space)
        for (auto setting = space->begin(); setting != space->end(); ++setting)
            m_portal.take(space.key(), setting.key(), setting.value());
    update();
}

void DesktopSettings::takeSetting(const QString& space, const QString& key, const QDBusVariant& value) {
    m_portal.take(space, key, value.variant());
    update();
}

void DesktopSettings::update() {
    const Appearance appearance = m_override.value_or(m_portal.appearance(paletteAppearance()));
    if (appearance == m_appearance)
        return;
    m_appearance = appearance;
    emit changed();
}

} // namespace tallyglass
