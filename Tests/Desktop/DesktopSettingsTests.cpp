#include "Tallyglass/Desktop/DesktopSettings.h"
#include "Tests/Desktop/PrivateBus.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gtest/gtest.h>

#include <QDBusContext>
#include <QDBusMetaType>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

namespace tallyglass {
namespace {

using AllSettings = QMap<QString, QVariantMap>;

/// The desktop's settings portal, as the message bus knows it.
class StandInPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit StandInPortal(const test::PrivateBus& bus, const AllSettings& settings) : m_settings(settings) {
        qDBusRegisterMetaType<AllSettings>();
        bus.connection().registerObject("/org/freedesktop/portal/desktop", this,
                                        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.connection().registerService("org.freedesktop.portal.Desktop");
    }

    /// From now on it answers so, and it tells everybody.
    void change(const QString& space, const QString& key, const QVariant& value) {
        m_settings[space][key] = value;
        emit SettingChanged(space, key, QDBusVariant(value));
    }

public slots:
    QMap<QString, QVariantMap> ReadAll(const QStringList& spaces) {
        AllSettings settings;
        for (const auto& space : spaces)
            if (m_settings.contains(space))
                settings.insert(space, m_settings.value(space));
        return settings;
    }

signals:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    AllSettings m_settings;
};

QPalette darkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::white);
    return palette;
}

TEST(DesktopSettings, takesWhatThePortalSaysAndFollowsIt) {
    test::PrivateBus bus;
    StandInPortal portal(
        bus, {{"org.freedesktop.appearance", {{"color-scheme", 1u}}},
              {"org.gnome.desktop.interface", {{"enable-animations", false}, {"text-scaling-factor", 1.25}}},
              {"org.gnome.desktop.a11y.interface", {{"high-contrast", true}}}});
    DesktopSettings settings(bus.connector());
    EXPECT_EQ(settings.appearance(), Appearance()) << "nothing waits for the portal";

    test::waitUntil([&] { return settings.isDark(); });
    EXPECT_TRUE(settings.reducesMotion());
    EXPECT_TRUE(settings.differentiatesWithoutColor());
    EXPECT_EQ(settings.textScale(), 1.25);

    portal.change("org.freedesktop.appearance", "color-scheme", 2u);
    test::waitUntil([&] { return !settings.isDark(); });
    portal.change("org.gnome.desktop.interface", "text-scaling-factor", 2.0);
    test::waitUntil([&] { return settings.textScale() == 2.0; });
    portal.change("org.gnome.desktop.interface", "enable-animations", true);
    test::waitUntil([&] { return !settings.reducesMotion(); });
}

TEST(DesktopSettings, takesTheBrightnessOfThePaletteWhereNoPortalAnswers) {
    test::PrivateBus bus;
    DesktopSettings settings(bus.connector());
    DesktopSettings withoutBus(test::noBus);
    QSignalSpy changed(&withoutBus, &DesktopSettings::changed);
    const QPalette palette = QGuiApplication::palette();

    QGuiApplication::setPalette(darkPalette());
    test::waitUntil([&] { return settings.isDark() && withoutBus.isDark(); });
    QGuiApplication::setPalette(palette);
    test::waitUntil([&] { return !settings.isDark() && !withoutBus.isDark(); });

    EXPECT_EQ(changed.count(), 2);
}

TEST(DesktopSettings, showsAnOverrideForAsLongAsItStands) {
    DesktopSettings settings(test::noBus);
    QSignalSpy changed(&settings, &DesktopSettings::changed);
    const Appearance wished{.isDark = true, .reducesMotion = true, .textScale = 2};

    settings.setOverride(wished);
    EXPECT_EQ(settings.appearance(), wished);
    settings.setOverride(wished);
    EXPECT_EQ(changed.count(), 1);
    settings.setOverride(std::nullopt);
    EXPECT_EQ(settings.appearance(), Appearance());
}

TEST(PortalSettings, passOverWhatTheyDoNotUnderstand) {
    PortalSettings settings;
    const Appearance fallback{.isDark = true, .reducesMotion = true, .textScale = 1.5};

    settings.take("org.freedesktop.appearance", "color-scheme", "dark");
    settings.take("org.freedesktop.appearance", "color-scheme", 0u);
    settings.take("org.gnome.desktop.interface", "enable-animations", 1);
    settings.take("org.gnome.desktop.interface", "text-scaling-factor", -1.0);
    settings.take("org.gnome.desktop.interface", "text-scaling-factor", std::nan(""));
    settings.take("org.example", "color-scheme", 2u);
    EXPECT_EQ(settings.appearance(fallback), fallback);

    settings.take("org.gnome.desktop.interface", "text-scaling-factor", 50.0);
    settings.take("org.freedesktop.appearance", "color-scheme",
                  QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(2u)))));
    EXPECT_EQ(settings.appearance(fallback).textScale, 3.0);
    EXPECT_FALSE(settings.appearance(fallback).isDark);
}

} // namespace
} // namespace tallyglass

#include "DesktopSettingsTests.moc"
