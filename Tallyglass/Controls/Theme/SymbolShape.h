// A symbol as an item of a scene. `Symbol` in QML, which gives it the look of the theme.
//
// Main thread only, but for paint().

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace tallyglass {

class SymbolShape : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString name MEMBER m_name NOTIFY lookChanged) ///< in the system; empty for none
    Q_PROPERTY(double size MEMBER m_size NOTIFY lookChanged)  ///< of the sides of its square
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)

public:
    explicit SymbolShape(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

signals:
    void lookChanged();

private:
    void takeLook();

    QString m_name;
    double m_size = 0;
    QColor m_color;
};

} // namespace tallyglass
