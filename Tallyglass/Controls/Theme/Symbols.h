// The symbols of the program: their names in the system, such as "lock.fill", and their glyphs in the symbol
// font.
//
// Main thread only. In QML a symbol is drawn with `Symbol { name: "lock.fill" }`.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QStringList>

namespace tallyglass {

class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The character of the symbol font for `name`. Empty, with a warning, for an unknown name; empty without
    /// a warning for the empty name, so that QML needs no condition.
    [[nodiscard]] Q_INVOKABLE static QString glyph(const QString& name);

    /// Every known name, in the order of the table.
    [[nodiscard]] static QStringList names();

    /// Registers the font with the program once, and returns its family.
    [[nodiscard]] static QString fontFamily();

    /// The resource path of the font.
    [[nodiscard]] static QString fontFile();
};

} // namespace tallyglass
