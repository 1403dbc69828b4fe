// The stroke of a capacity ring: a track, and on it an arc that starts at the top.
//
// Main thread only. Ignored by screen readers, which read the ring around it.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace tallyglass {

class CapacityArc : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(double fraction MEMBER m_fraction NOTIFY lookChanged) ///< of the whole turn, 0 to 1
    Q_PROPERTY(double lineWidth MEMBER m_lineWidth NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(QColor trackColor MEMBER m_trackColor NOTIFY lookChanged)

public:
    explicit CapacityArc(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

signals:
    void lookChanged();

private:
    double m_fraction = 0;
    double m_lineWidth = 10;
    QColor m_color;
    QColor m_trackColor;
};

} // namespace tallyglass
