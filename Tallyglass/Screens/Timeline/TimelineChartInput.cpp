// What the timeline's chart does for the keyboard, the pointer and the wheel.

#include "Tallyglass/Screens/Timeline/TimelineChart.h"

#include <QGuiApplication>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

constexpr double keyZoom = 1.5;
constexpr double notch = 120;      // the angle of one step of a wheel
constexpr double notchZoom = 1.25; // how much closer a step comes
constexpr double notchScroll = 48; // pixels that a step scrolls

} // namespace

void TimelineChart::keyPressEvent(QKeyEvent* event) {
    const int page = std::max(1, static_cast<int>(m_range.length() / 10));
    if (!m_viewModel || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return event->ignore();
    setVisualFocus(true);
    switch (event->key()) {
    case Qt::Key_Left:
        return m_viewModel->moveSelection(-1);
    case Qt::Key_Right:
        return m_viewModel->moveSelection(1);
    case Qt::Key_PageUp:
        return m_viewModel->moveSelection(-page);
    case Qt::Key_PageDown:
        return m_viewModel->moveSelection(page);
    case Qt::Key_Home:
        return setValue(minimumValue());
    case Qt::Key_End:
        return setValue(maximumValue());
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return m_viewModel->openSelectedChanges();
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Minus: {
        const auto selected = m_viewModel->selectedIndex();
        const double anchor = selected ? static_cast<double>(*selected) : (m_range.low + m_range.high) / 2;
        return zoom(event->key() == Qt::Key_Minus ? 1 / keyZoom : keyZoom, layout().x(anchor));
    }
    case Qt::Key_0:
        return showAll();
    case Qt::Key_Escape:
        if (m_viewModel->selectedIndex())
            return m_viewModel->clearSelection();
        break;
    default:
        break;
    }
    event->ignore();
}

void TimelineChart::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->position();
    m_draggedFrom = m_range.low;
    m_isDragging = false;
    forceActiveFocus(Qt::MouseFocusReason);
}

void TimelineChart::mouseMoveEvent(QMouseEvent* event) {
    if (!m_pressed)
        return;
    const double moved = event->position().x() - m_pressed->x();
    if (!m_isDragging && std::abs(moved) < QGuiApplication::styleHints()->startDragDistance())
        return;
    m_isDragging = true;
    if (!isZoomed())
        return;
    setKeepMouseGrab(true); // or the page would take the drag for a scroll of its own
    setHoveredIndex(std::nullopt);
    const double target = m_draggedFrom - moved / layout().entryWidth();
    setRange(m_range.scrolled(target - m_range.low, count()));
}

void TimelineChart::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = m_pressed && !m_isDragging && contains(event->position());
    mouseUngrabEvent();
    if (!isClick || !m_viewModel)
        return;
    const auto index = selectableIndex(m_viewModel->entries(), indexAt(event->position()));
    if (!index)
        return;
    m_viewModel->select(*index);
    m_viewModel->openSelectedChanges();
}

void TimelineChart::mouseUngrabEvent() {
    m_pressed.reset();
    m_isDragging = false;
    setKeepMouseGrab(false);
}

void TimelineChart::hoverMoveEvent(QHoverEvent* event) {
    if (!m_isDragging)
        setHoveredIndex(indexAt(event->position()));
}

void TimelineChart::hoverLeaveEvent(QHoverEvent*) {
    setHoveredIndex(std::nullopt);
}

void TimelineChart::wheelEvent(QWheelEvent* event) {
    const bool isFine = !event->pixelDelta().isNull();
    const QPoint angle = event->angleDelta();
    const bool isSideways = std::abs(angle.x()) > std::abs(angle.y());
    const TimelineRange before = m_range;

    if (isSideways || (event->modifiers() & Qt::ShiftModifier)) {
        const double steps = (isSideways ? angle.x() : angle.y()) / notch;
        const double pixels =
            isFine ? (isSideways ? event->pixelDelta().x() : event->pixelDelta().y()) : steps * notchScroll;
        if (layout().entryWidth() > 0)
            setRange(m_range.scrolled(-pixels / layout().entryWidth(), count()));
    } else if (hasActiveFocus() || (event->modifiers() & Qt::ControlModifier)) {
        zoom(std::pow(notchZoom, angle.y() / notch), event->position().x());
    }
    // What changes nothing here is the page's to scroll.
    event->setAccepted(m_range != before);
    if (event->isAccepted())
        setHoveredIndex(indexAt(event->position()));
}

} // namespace tallyglass
