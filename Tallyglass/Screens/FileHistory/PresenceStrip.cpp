#include "Tallyglass/Screens/FileHistory/PresenceStrip.h"

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

namespace tallyglass {

namespace {

constexpr double markHeight = 4; // below the selected cell
constexpr double smallestMarkWidth = 10;

} // namespace

PresenceStrip::PresenceStrip(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setActiveFocusOnTab(true);
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAntialiasing(true);
}

void PresenceStrip::setViewModel(FileHistoryViewModel* viewModel) {
    if (viewModel == m_viewModel)
        return;
    if (m_viewModel)
        m_viewModel->disconnect(this);
    m_viewModel = viewModel;
    if (m_viewModel) {
        connect(m_viewModel, &FileHistoryViewModel::presenceChanged, this, &PresenceStrip::layOut);
        connect(m_viewModel, &FileHistoryViewModel::selectedBackupChanged, this,
                &PresenceStrip::takeSelection);
    }
    layOut();
    emit viewModelChanged();
}

void PresenceStrip::componentComplete() {
    QQuickPaintedItem::componentComplete();
    if (QQmlEngine* engine = qmlEngine(this)) {
        m_theme = Theme::of(*engine);
        connect(m_theme, &Theme::changed, this, [this] { update(); });
    }
    layOut();
}

void PresenceStrip::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        layOut();
}

void PresenceStrip::layOut() {
    m_cells = m_viewModel ? PresenceCells::fitting(m_viewModel->presence(), width()) : PresenceCells();
    setHoveredText({});
    update();
    emit valueChanged();
}

void PresenceStrip::paint(QPainter* painter) {
    if (!m_theme || !m_viewModel)
        return;
    const double gap = m_cells.pitch >= 8 ? 2 : 1;
    const double cellHeight = height() - markHeight - 3;
    const double radius = std::min(3.0, (m_cells.pitch - gap) / 3);
    const QList<QColor> colors = m_theme->seriesColors();
    const auto newest = static_cast<std::size_t>(m_viewModel->rows()->count()) - 1; // of the versions
    painter->setRenderHint(QPainter::Antialiasing);
    for (std::size_t index = 0; index < m_cells.cells.size(); ++index) {
        const PresenceCell& cell = m_cells.cells[index];
        const QRectF box(static_cast<double>(index) * m_cells.pitch, 0, m_cells.pitch - gap, cellHeight);
        if (cell.hasMissing || !cell.version) {
            painter->setPen(QPen(m_theme->secondaryText(), 1));
            painter->setBrush(Qt::NoBrush);
            painter->drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        }
        if (!cell.version)
            continue;
        painter->setPen(Qt::NoPen);
        painter->setBrush(colors[static_cast<qsizetype>(newest - *cell.version) % colors.size()]);
        // Half full where the item is missing in some of its backups.
        painter->drawRoundedRect(cell.hasMissing ? box.adjusted(0, cellHeight / 2, 0, 0) : box, radius,
                                 radius);
    }
    if (const auto selected = m_viewModel->selectedBackup()) {
        const double x = static_cast<double>(m_cells.cellOf(*selected)) * m_cells.pitch;
        painter->setPen(Qt::NoPen);
        painter->setBrush(m_theme->text());
        const double markWidth = std::max(m_cells.pitch - gap, smallestMarkWidth);
        const double left = std::clamp(x + (m_cells.pitch - gap - markWidth) / 2, 0.0, width() - markWidth);
        painter->drawRoundedRect(QRectF(left, height() - markHeight, markWidth, markHeight), 2, 2);
    }
}

double PresenceStrip::value() const {
    const auto selected = m_viewModel ? m_viewModel->selectedBackup() : std::nullopt;
    return selected ? static_cast<double>(*selected + 1) : 0;
}

void PresenceStrip::setValue(double value) {
    if (count() > 0 && !std::isnan(value))
        m_viewModel->selectBackup(
            static_cast<std::size_t>(std::clamp(std::round(value), 1.0, maximumValue())) - 1);
}

double PresenceStrip::maximumValue() const {
    return static_cast<double>(count());
}

void PresenceStrip::moveBy(int by) {
    setValue(value() == 0 ? maximumValue() : value() + by);
}

/// Selects the next backup in this direction that doesn't hold the same as the selected one.
void PresenceStrip::moveToOtherVersion(int direction) {
    const auto selected = m_viewModel->selectedBackup();
    if (!selected)
        return moveBy(direction);
    const auto& presence = m_viewModel->presence();
    auto next = static_cast<std::ptrdiff_t>(*selected);
    const auto end = static_cast<std::ptrdiff_t>(presence.size());
    while (next >= 0 && next < end && presence[static_cast<std::size_t>(next)] == presence[*selected])
        next += direction;
    setValue(static_cast<double>(next + 1));
}

void PresenceStrip::keyPressEvent(QKeyEvent* event) {
    if (count() == 0 || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return event->ignore();
    setVisualFocus(true);
    switch (event->key()) {
    case Qt::Key_Left:
        return moveBy(-1);
    case Qt::Key_Right:
        return moveBy(1);
    case Qt::Key_PageUp:
        return moveToOtherVersion(-1);
    case Qt::Key_PageDown:
        return moveToOtherVersion(1);
    case Qt::Key_Home:
        return setValue(minimumValue());
    case Qt::Key_End:
        return setValue(maximumValue());
    default:
        event->ignore();
    }
}

void PresenceStrip::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    if (const auto backup = m_cells.backupAt(event->position().x(), count()))
        m_viewModel->selectBackup(*backup);
}

void PresenceStrip::hoverMoveEvent(QHoverEvent* event) {
    const auto backup = m_cells.backupAt(event->position().x(), count());
    setHoveredText(backup ? m_viewModel->backupText(*backup) : QString());
}

void PresenceStrip::hoverLeaveEvent(QHoverEvent*) {
    setHoveredText({});
}

void PresenceStrip::focusInEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
}

void PresenceStrip::focusOutEvent(QFocusEvent*) {
    setVisualFocus(false);
}

void PresenceStrip::takeSelection() {
    update();
    emit valueChanged();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changedValue(this, value());
        QAccessible::updateAccessibility(&changedValue);
        QAccessibleEvent changedText(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changedText);
    }
}

void PresenceStrip::setVisualFocus(bool isVisual) {
    if (std::exchange(m_hasVisualFocus, isVisual) != isVisual)
        emit visualFocusChanged();
}

void PresenceStrip::setHoveredText(const QString& text) {
    if (std::exchange(m_hoveredText, text) != text)
        emit hoveredTextChanged();
}

} // namespace tallyglass
