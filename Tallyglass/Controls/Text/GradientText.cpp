#include "Tallyglass/Controls/Text/GradientText.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <cmath>

namespace tallyglass {

GradientText::GradientText(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &GradientText::textChanged, this, &GradientText::measure);
    connect(this, &GradientText::colorChanged, this, [this] { update(); });
}

QFont GradientText::font() const {
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(std::lround(m_pixelSize)));
    font.setWeight(QFont::Bold);
    return font;
}

void GradientText::componentComplete() {
    QQuickPaintedItem::componentComplete();
    measure();
}

void GradientText::measure() {
    if (!isComponentComplete()) // the size may still change, and each size loads a font
        return;
    const QFontMetricsF metrics(font());
    setImplicitSize(std::ceil(metrics.horizontalAdvance(m_text)), std::ceil(metrics.height()));
    elide();
}

void GradientText::elide() {
    if (!isComponentComplete())
        return;
    const QString shown = QFontMetricsF(font()).elidedText(m_text, Qt::ElideMiddle, std::ceil(width()));
    if (shown != m_elided)
        update();
    m_elided = shown;
    const bool truncated = m_elided != m_text;
    if (std::exchange(m_isTruncated, truncated) != truncated)
        emit truncatedChanged();
}

void GradientText::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickPaintedItem::geometryChange(now, before);
    if (now.width() != before.width())
        elide();
}

void GradientText::paint(QPainter* painter) {
    const QFontMetricsF metrics(font());
    painter->setFont(font());
    painter->setPen(m_startColor);
    painter->drawText(QPointF(0, (height() - metrics.height()) / 2 + metrics.ascent()), m_elided);

    // The colours replace those of the whole text at once, since a gradient per glyph is slow.
    QLinearGradient gradient(0, 0, std::max(1.0, metrics.horizontalAdvance(m_elided)), 0);
    gradient.setColorAt(0, m_startColor);
    gradient.setColorAt(1, m_endColor);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(QRectF({}, size()), gradient);
}

} // namespace tallyglass
