#include "Tallyglass/Controls/Cards/CapacityArc.h"

#include <QPainter>
#include <cmath>
#include <numbers>

namespace tallyglass {

CapacityArc::CapacityArc(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &CapacityArc::lookChanged, this, [this] { update(); });
}

void CapacityArc::paint(QPainter* painter) {
    const double inset = m_lineWidth / 2;
    const QRectF circle = boundingRect().adjusted(inset, inset, -inset, -inset);
    painter->setRenderHint(QPainter::Antialiasing);

    painter->setPen(QPen(m_trackColor, m_lineWidth));
    painter->drawEllipse(circle);
    if (m_fraction <= 0)
        return;
    constexpr int sixteenthsPerDegree = 16; // the painter's unit of angle
    // Round ends extend the arc by half a line width, which would close the gap of a nearly full ring.
    const double gap = (1 - m_fraction) * std::numbers::pi * circle.width();
    painter->setPen(
        QPen(m_color, m_lineWidth, Qt::SolidLine, gap > m_lineWidth * 1.5 ? Qt::RoundCap : Qt::FlatCap));
    painter->drawArc(circle, 90 * sixteenthsPerDegree,
                     -static_cast<int>(std::lround(m_fraction * 360 * sixteenthsPerDegree)));
}

} // namespace tallyglass
