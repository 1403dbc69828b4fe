#include "Tallyglass/Desktop/Appearance.h"

#include <QDBusVariant>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

// What all desktops share, and what one has had for longer.
const QString shared = QStringLiteral("org.freedesktop.appearance");
const QString interface = QStringLiteral("org.gnome.desktop.interface");
const QString accessibility = QStringLiteral("org.gnome.desktop.a11y.interface");

QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<bool> flag(const QVariant& value) {
    if (value.metaType().id() != QMetaType::Bool)
        return std::nullopt;
    return value.toBool();
}

std::optional<uint> choice(const QVariant& value) {
    if (value.metaType().id() != QMetaType::UInt)
        return std::nullopt;
    return value.toUInt();
}

std::optional<double> scale(const QVariant& value) {
    const double number = value.metaType().id() == QMetaType::Double ? value.toDouble() : NAN;
    if (!(number > 0) || !std::isfinite(number))
        return std::nullopt;
    return std::clamp(number, 0.5, 3.0);
}

/// Whether `value` is the choice 1, absent if it is no choice at all.
std::optional<bool> isOne(const QVariant& value) {
    const auto chosen = choice(value);
    return chosen ? std::optional(*chosen == 1) : std::nullopt;
}

/// 1 is dark, 2 light, 0 no wish.
std::optional<bool> darkness(const QVariant& value) {
    const auto chosen = choice(value);
    if (chosen != 1u && chosen != 2u)
        return std::nullopt;
    return chosen == 1u;
}

} // namespace

QStringList PortalSettings::namespaces() {
    return {shared, interface, accessibility};
}

void PortalSettings::take(const QString& space, const QString& key, const QVariant& wrapped) {
    const QVariant value = unwrapped(wrapped);
    if (space == shared && key == QStringLiteral("color-scheme"))
        m_isDark = darkness(value);
    else if (space == shared && key == QStringLiteral("reduced-motion"))
        m_reducesMotion = isOne(value);
    else if (space == shared && key == QStringLiteral("contrast"))
        m_hasHighContrast = isOne(value);
    else if (space == interface && key == QStringLiteral("enable-animations"))
        m_animates = flag(value);
    else if (space == interface && key == QStringLiteral("text-scaling-factor"))
        m_textScale = scale(value);
    else if (space == accessibility && key == QStringLiteral("high-contrast"))
        m_hasHighContrast = flag(value);
    else if (space == accessibility && key == QStringLiteral("show-status-shapes"))
        m_showsShapes = flag(value);
}

Appearance PortalSettings::appearance(const Appearance& fallback) const {
    Appearance appearance = fallback;
    appearance.isDark = m_isDark.value_or(fallback.isDark);
    if (m_animates || m_reducesMotion)
        appearance.reducesMotion = !m_animates.value_or(true) || m_reducesMotion.value_or(false);
    if (m_hasHighContrast || m_showsShapes)
        appearance.differentiatesWithoutColor =
            m_hasHighContrast.value_or(false) || m_showsShapes.value_or(false);
    appearance.textScale = m_textScale.value_or(fallback.textScale);
    return appearance;
}

} // namespace tallyglass
