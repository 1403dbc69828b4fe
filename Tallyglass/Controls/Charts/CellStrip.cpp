#include "Tallyglass/Controls/Charts/CellStrip.h"

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QQmlEngine>
#include <algorithm>
#include <cmath>
#include <utility>

namespace tallyglass {

namespace {

constexpr double markHeight = 4; // below the selected cell
constexpr double markDistance = 3;
constexpr double smallestMarkWidth = 10;

double gap(const CellLayout& layout) {
    return layout.pitch >= 8 ? 2 : 1;
}

} // namespace

CellStrip::CellStrip(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setActiveFocusOnTab(true);
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAntialiasing(true);
}

void CellStrip::componentComplete() {
    QQuickPaintedItem::componentComplete();
    if (QQmlEngine* engine = qmlEngine(this)) {
        m_theme = Theme::of(*engine);
        connect(m_theme, &Theme::changed, this, [this] { update(); });
    }
    takeItems();
}

void CellStrip::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        takeItems();
}

void CellStrip::takeItems() {
    m_layout = CellLayout::fitting(count(), width());
    m_hovered.reset();
    update();
    emit captionChanged();
    emit valueChanged();
}

void CellStrip::takeSelection() {
    update();
    emit captionChanged();
    emit valueChanged();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changedValue(this, value());
        QAccessible::updateAccessibility(&changedValue);
        QAccessibleEvent changedText(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changedText);
    }
}

double CellStrip::cornerRadius(const QRectF& box) {
    return std::min(3.0, box.width() / 3);
}

void CellStrip::paint(QPainter* painter) {
    if (!m_theme)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    const QSizeF size(m_layout.pitch - gap(m_layout), height() - markHeight - markDistance);
    for (std::size_t cell = 0; cell < m_layout.cellCount; ++cell)
        paintCell(*painter, QRectF(QPointF(static_cast<double>(cell) * m_layout.pitch, 0), size),
                  m_layout.firstItemOf(cell), m_layout.firstItemOf(cell + 1));
    if (const auto item = selected())
        paintSelection(*painter, *item);
}

void CellStrip::paintSelection(QPainter& painter, std::size_t item) const {
    const double cellWidth = m_layout.pitch - gap(m_layout);
    const double markWidth = std::max(cellWidth, smallestMarkWidth);
    const double cellLeft = static_cast<double>(m_layout.cellOf(item)) * m_layout.pitch;
    const double left =
        std::clamp(cellLeft + (cellWidth - markWidth) / 2, 0.0, std::max(0.0, width() - markWidth));
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme->text());
    painter.drawRoundedRect(QRectF(left, height() - markHeight, markWidth, markHeight), 2, 2);
}

QString CellStrip::caption() const {
    return m_hovered ? textOf(*m_hovered) : selectedText();
}

QString CellStrip::selectedText() const {
    const auto item = selected();
    return item ? textOf(*item) : QString();
}

double CellStrip::value() const {
    const auto item = selected();
    return item ? static_cast<double>(*item + 1) : 0;
}

void CellStrip::setValue(double value) {
    if (count() > 0 && !std::isnan(value))
        select(static_cast<std::size_t>(std::clamp(std::round(value), 1.0, maximumValue())) - 1);
}

void CellStrip::moveBy(int by) {
    setValue(value() == 0 ? maximumValue() : value() + by);
}

void CellStrip::activateSelected() {
    if (const auto item = selected())
        emit activated(static_cast<int>(*item));
}

/// Selects the next item in this direction that isn't like the selected one.
void CellStrip::moveToDifferent(int direction) {
    const auto item = selected();
    if (!item)
        return moveBy(direction);
    auto next = static_cast<std::ptrdiff_t>(*item);
    const auto end = static_cast<std::ptrdiff_t>(count());
    while (next >= 0 && next < end && areAlike(static_cast<std::size_t>(next), *item))
        next += direction;
    setValue(static_cast<double>(next + 1));
}

void CellStrip::keyPressEvent(QKeyEvent* event) {
    if (count() == 0 || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return event->ignore();
    setVisualFocus(true);
    switch (event->key()) {
    case Qt::Key_Left:
        return moveBy(-1);
    case Qt::Key_Right:
        return moveBy(1);
    case Qt::Key_PageUp:
        return moveToDifferent(-1);
    case Qt::Key_PageDown:
        return moveToDifferent(1);
    case Qt::Key_Home:
        return setValue(minimumValue());
    case Qt::Key_End:
        return setValue(maximumValue());
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return activateSelected();
    default:
        event->ignore();
    }
}

void CellStrip::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    if (const auto item = m_layout.itemAt(event->position().x()))
        select(*item);
}

void CellStrip::mouseReleaseEvent(QMouseEvent* event) {
    const auto item = m_layout.itemAt(event->position().x());
    if (item && item == selected() && contains(event->position()))
        emit activated(static_cast<int>(*item));
}

void CellStrip::hoverMoveEvent(QHoverEvent* event) {
    setHovered(m_layout.itemAt(event->position().x()));
}

void CellStrip::hoverLeaveEvent(QHoverEvent*) {
    setHovered(std::nullopt);
}

void CellStrip::focusInEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
}

void CellStrip::focusOutEvent(QFocusEvent*) {
    setVisualFocus(false);
}

void CellStrip::setVisualFocus(bool isVisual) {
    if (std::exchange(m_hasVisualFocus, isVisual) != isVisual)
        emit visualFocusChanged();
}

void CellStrip::setHovered(std::optional<std::size_t> item) {
    if (std::exchange(m_hovered, item) != item)
        emit captionChanged();
}

} // namespace tallyglass
