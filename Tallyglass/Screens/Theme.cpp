#include "Tallyglass/Screens/Theme.h"

#include <QFontDatabase>

namespace tallyglass {

namespace {

/// A role's light and dark form.
QColor role(bool dark, QColor light, QColor darkForm) {
    return dark ? darkForm : light;
}

QColor components(double red, double green, double blue) {
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

} // namespace

Theme::Theme(QObject* parent) : QObject(parent) {
    const int font =
        QFontDatabase::addApplicationFont(QStringLiteral(":/Tallyglass/MaterialIcons-Regular.ttf"));
    m_symbolFont = QFontDatabase::applicationFontFamilies(font).value(0);
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
    set(m_textScale, scale);
}

QColor Theme::accent() const {
    return role(m_dark, QColor(0x24, 0x45, 0xB0), QColor(0x8C, 0xA6, 0xFF));
}
QColor Theme::accentSoft() const {
    return role(m_dark, components(0.28, 0.40, 0.85), components(0.38, 0.55, 0.98));
}
QColor Theme::onAccent() const {
    return role(m_dark, Qt::white, QColor(0x0B, 0x12, 0x2E));
}
QColor Theme::healthy() const {
    return role(m_dark, components(0.07, 0.52, 0.38), components(0.20, 0.80, 0.62));
}
QColor Theme::warning() const {
    return role(m_dark, components(0.72, 0.45, 0.00), components(0.98, 0.71, 0.24));
}
QColor Theme::critical() const {
    return role(m_dark, components(0.80, 0.14, 0.22), components(0.96, 0.35, 0.42));
}
QColor Theme::text() const {
    return role(m_dark, QColor(0x1B, 0x1E, 0x28), QColor(0xEE, 0xF0, 0xF6));
}
QColor Theme::secondaryText() const {
    return role(m_dark, QColor(0x56, 0x5C, 0x6E), QColor(0xA9, 0xB0, 0xC2));
}
QColor Theme::windowGround() const {
    return role(m_dark, QColor(0xF6, 0xF7, 0xFA), QColor(0x17, 0x19, 0x20));
}
QColor Theme::sidebarGround() const {
    return role(m_dark, QColor(0xE9, 0xEC, 0xF3), QColor(0x1D, 0x20, 0x29));
}
QColor Theme::cardGround() const {
    return role(m_dark, Qt::white, QColor(0x20, 0x23, 0x2C));
}
QColor Theme::line() const {
    return role(m_dark, QColor(0xDD, 0xE1, 0xEA), QColor(0x34, 0x39, 0x46));
}
QColor Theme::controlGround() const {
    return role(m_dark, QColor(0xEE, 0xF0, 0xF5), QColor(0x2B, 0x2F, 0x3B));
}
QColor Theme::hoverGround() const {
    return role(m_dark, QColor(0xE2, 0xE6, 0xEF), QColor(0x36, 0x3B, 0x49));
}

} // namespace tallyglass
