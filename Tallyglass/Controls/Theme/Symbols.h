// The program's symbols: the system's names for them, such as "lock.fill", and the glyphs of the symbol font
// that stand for them here.
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

    /// The one character of the symbol font that draws `name`. Empty, with a warning, for a name that isn't
    /// known; empty without one for the empty name, so that "no symbol" needs no condition in QML.
    [[nodiscard]] Q_INVOKABLE static QString glyph(const QString& name);

    /// Every known name, in the order of the table.
    [[nodiscard]] static QStringList names();

    /// Makes the font known to the program, once, and gives its family.
    [[nodiscard]] static QString fontFamily();

    /// Where the font lies in the program.
    [[nodiscard]] static QString fontFile();
};

} // namespace tallyglass
