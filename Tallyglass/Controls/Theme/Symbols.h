// The symbols of the program: their names in the system, such as "lock.fill", and their outlines, which come
// from the symbol font that is compiled in. That font isn't registered with the others, since an installed
// one of the same family could be drawn in its place.
//
// Any thread. In QML a symbol is drawn with `Symbol { name: "lock.fill" }`.

#pragma once

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <QStringList>

class QPainter;

namespace tallyglass {

struct Symbols {
    /// The outline of a symbol in a square whose sides are 1. Empty, with a warning, for an unknown name;
    /// empty without a warning for the empty name, so that QML needs no condition.
    [[nodiscard]] static QPainterPath outline(const QString& name);

    /// Fills the outline in the largest square in the middle of `box`.
    static void paint(QPainter& painter, const QString& name, const QRectF& box, const QColor& color);

    /// Every known name, in the order of the table.
    [[nodiscard]] static QStringList names();
};

} // namespace tallyglass
