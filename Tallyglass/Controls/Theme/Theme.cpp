#include "Tallyglass/Controls/Theme/Theme.h"

#include <QQmlEngine>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

QColor components(double red, double green, double blue) {
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

QColor translucent(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

} // namespace

Theme::Theme(QObject* parent) : QObject(parent) {}

Theme* Theme::of(QQmlEngine& engine) {
    return engine.singletonInstance<Theme*>(qmlTypeId("Tallyglass.Controls", 1, 0, "Theme"));
}

double Theme::rowHeight() const {
    return std::round((bodySize() + captionSize()) * 1.4) + unit() * 1.5;
}

template <typename Value>
void Theme::set(Value& field, Value value) {
    if (field == value)
        return;
    field = value;
    emit changed();
}

void Theme::setDark(bool dark) {
    set(m_dark, dark);
}
void Theme::setReduceMotion(bool reduce) {
    set(m_reduceMotion, reduce);
}
void Theme::setDifferentiateWithoutColor(bool differentiate) {
    set(m_differentiateWithoutColor, differentiate);
}
void Theme::setTextScale(double scale) {
    set(m_textScale, std::clamp(scale, 0.5, 3.0));
}

QColor Theme::color(Role role) const {
    switch (role) {
    case Role::text:
        return variant(QColor(0x1B, 0x1E, 0x28), QColor(0xEE, 0xF0, 0xF6));
    case Role::secondaryText:
        return variant(QColor(0x55, 0x5B, 0x6D), QColor(0xAD, 0xB4, 0xC6));
    case Role::accent:
        return variant(QColor(0x24, 0x45, 0xB0), QColor(0x8C, 0xA6, 0xFF));
    case Role::accentSoft:
        return variant(components(0.28, 0.40, 0.85), components(0.38, 0.55, 0.98));
    case Role::healthy:
        return variant(components(0.07, 0.52, 0.38), components(0.20, 0.80, 0.62));
    case Role::warning:
        return variant(components(0.72, 0.45, 0.00), components(0.98, 0.71, 0.24));
    case Role::critical:
        return variant(components(0.80, 0.14, 0.22), components(0.96, 0.35, 0.42));
    }
    return {};
}

QList<QColor> Theme::seriesColors() const {
    return {
        variant(QColor(0x24, 0x45, 0xB0), QColor(0x8C, 0xA6, 0xFF)), // blue
        variant(QColor(0xB4, 0x53, 0x09), QColor(0xF5, 0xA5, 0x42)), // orange
        variant(QColor(0x0B, 0x7A, 0x5E), QColor(0x3D, 0xD0, 0xA0)), // green
        variant(QColor(0xA2, 0x1C, 0xAF), QColor(0xE8, 0x7D, 0xF0)), // magenta
        variant(QColor(0x0E, 0x74, 0x90), QColor(0x4C, 0xCF, 0xE8)), // cyan
        variant(QColor(0xB9, 0x1C, 0x1C), QColor(0xF8, 0x7A, 0x7A)), // red
        variant(QColor(0x5F, 0x72, 0x0A), QColor(0xB6, 0xD6, 0x4A)), // olive
        variant(QColor(0x6D, 0x28, 0xD9), QColor(0xB8, 0x9C, 0xFC)), // violet
    };
}

QColor Theme::textColor(Role role) const {
    switch (role) {
    case Role::accentSoft:
        return variant(components(0.24, 0.35, 0.78), components(0.52, 0.66, 1.00));
    case Role::healthy:
        return variant(components(0.04, 0.42, 0.30), color(role));
    case Role::warning:
        return variant(components(0.54, 0.33, 0.00), color(role));
    case Role::critical:
        return variant(components(0.74, 0.10, 0.18), components(1.00, 0.50, 0.55));
    default:
        return color(role);
    }
}

namespace {

template <typename ColorOf>
QList<QColor> byRole(const ColorOf& colorOf) {
    QList<QColor> list;
    for (int role = 0; role <= static_cast<int>(Theme::Role::critical); ++role)
        list.append(colorOf(static_cast<Theme::Role>(role)));
    return list;
}

} // namespace

QList<QColor> Theme::colors() const {
    return byRole([this](Role role) { return color(role); });
}
QList<QColor> Theme::textColors() const {
    return byRole([this](Role role) { return textColor(role); });
}

QColor Theme::onAccent() const {
    return variant(Qt::white, QColor(0x0B, 0x12, 0x2E));
}
QColor Theme::windowBackground() const {
    return variant(QColor(0xF6, 0xF7, 0xFA), QColor(0x17, 0x19, 0x20));
}
QColor Theme::sidebarBackground() const {
    return variant(QColor(0xEB, 0xEE, 0xF5), QColor(0x1D, 0x20, 0x29));
}
QColor Theme::cardBackground() const {
    return variant(Qt::white, QColor(0x20, 0x23, 0x2C));
}
QColor Theme::controlBackground() const {
    return variant(QColor(0xEE, 0xF0, 0xF5), QColor(0x2B, 0x2F, 0x3B));
}
QColor Theme::hoverBackground() const {
    return variant(QColor(0xE3, 0xE7, 0xF0), QColor(0x36, 0x3B, 0x49));
}
QColor Theme::selectedBackground() const {
    return variant(QColor(0xDE, 0xE5, 0xF8), QColor(0x2E, 0x38, 0x58));
}
QColor Theme::line() const {
    return variant(QColor(0xDF, 0xE3, 0xEB), QColor(0x34, 0x39, 0x46));
}
QColor Theme::track() const {
    return variant(QColor(0xE4, 0xE8, 0xF0), QColor(0x34, 0x39, 0x47));
}
QColor Theme::scrim() const {
    return variant(translucent(QColor(0x12, 0x16, 0x24), 0.32), translucent(Qt::black, 0.55));
}
QColor Theme::shadow() const {
    return variant(translucent(QColor(0x1B, 0x24, 0x44), 0.06), translucent(Qt::black, 0.25));
}

} // namespace tallyglass
