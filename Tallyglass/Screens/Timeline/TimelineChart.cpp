#include "Tallyglass/Screens/Timeline/TimelineChart.h"

#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tallyglass/Screens/Timeline/TimelineWords.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>

namespace tallyglass {

TimelineChart::TimelineChart(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setActiveFocusOnTab(true);
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
}

void TimelineChart::setViewModel(TimelineViewModel* viewModel) {
    if (viewModel == m_viewModel)
        return;
    if (m_viewModel)
        m_viewModel->disconnect(this);
    m_viewModel = viewModel;
    if (m_viewModel) {
        connect(m_viewModel, &TimelineViewModel::entriesChanged, this, &TimelineChart::takeEntries);
        connect(m_viewModel, &TimelineViewModel::metricChanged, this, &TimelineChart::repaint);
        connect(m_viewModel, &TimelineViewModel::typicalHoursChanged, this, &TimelineChart::repaint);
        connect(m_viewModel, &TimelineViewModel::selectionChanged, this, &TimelineChart::takeSelection);
    }
    takeEntries();
    emit viewModelChanged();
}

void TimelineChart::componentComplete() {
    QQuickItem::componentComplete();
    if (QQmlEngine* engine = qmlEngine(this))
        connect(Theme::of(*engine), &Theme::changed, this, &TimelineChart::repaint);
    repaint();
}

void TimelineChart::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        repaint();
    QQuickItem::itemChange(change, data);
}

void TimelineChart::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        repaint();
}

std::size_t TimelineChart::count() const {
    return m_viewModel ? m_viewModel->entries().size() : 0;
}

void TimelineChart::takeEntries() {
    // All stays all; the newest backups stay in sight; otherwise what was leftmost stays it.
    TimelineRange range = TimelineRange::whole(count());
    if (isZoomed() && m_rangeCount > 0) {
        const bool wasAtEnd = m_range.high >= TimelineRange::whole(m_rangeCount).high;
        const auto& entries = m_viewModel->entries();
        const auto leftmost =
            std::ranges::lower_bound(entries, m_leftmost, {}, &TimelineEntry::date) - entries.begin();
        const double by = wasAtEnd
                              ? static_cast<double>(count())
                              : static_cast<double>(leftmost) - std::max(0.0, std::floor(m_range.low + 0.5));
        range = m_range.scrolled(by, count());
    }
    m_rangeCount = count();
    m_range = range;
    noteLeftmost();
    setHoveredIndex(std::nullopt);
    repaint();
    emit rangeChanged();
    emit valueChanged();
}

bool TimelineChart::isZoomed() const {
    return m_range.length() < TimelineRange::whole(m_rangeCount).length();
}

void TimelineChart::setRange(const TimelineRange& range) {
    if (range == m_range)
        return;
    m_range = range;
    noteLeftmost();
    repaint();
    emit rangeChanged();
}

void TimelineChart::noteLeftmost() {
    const auto first = m_range.indices(count()).first;
    if (first < count())
        m_leftmost = m_viewModel->entries()[first].date;
}

void TimelineChart::zoom(double factor, double x) {
    const double anchor = std::clamp(layout().position(x), m_range.low, m_range.high);
    setRange(m_range.zoomed(factor, anchor, count()));
}

void TimelineChart::showAll() {
    setRange(TimelineRange::whole(count()));
}

const TimelinePainter& TimelineChart::painter() {
    if (!m_painter) {
        TimelineSubject subject;
        if (m_viewModel)
            subject = {.entries = m_viewModel->entries(),
                       .days = m_viewModel->days(),
                       .metric = m_viewModel->metric(),
                       .typicalHours = m_viewModel->typicalHours()};
        TimelineStyle style;
        if (QQmlEngine* engine = qmlEngine(this))
            style = TimelineStyle(*Theme::of(*engine), QGuiApplication::font(),
                                  window() ? window()->effectiveDevicePixelRatio() : 1);
        m_painter.emplace(subject, style, m_range, size());
    }
    return *m_painter;
}

const TimelineLayout& TimelineChart::layout() {
    return painter().layout();
}

QRectF TimelineChart::barOf(std::size_t index) {
    const auto value =
        index < count() ? timelineValue(m_viewModel->entries()[index], m_viewModel->metric()) : std::nullopt;
    return value ? layout().bar(layout().columns.position(index), *value) : QRectF();
}

std::optional<std::size_t> TimelineChart::indexAt(QPointF point) {
    const TimelineLayout& place = layout();
    if (!m_viewModel || place.isEmpty() || !place.plot.united(place.lane).contains(point))
        return std::nullopt;
    return indexAtPosition(m_viewModel->entries(), place.position(point.x()));
}

void TimelineChart::repaint() {
    m_painter.reset();
    m_frame.isNew = true;
    polish();
}

void TimelineChart::takeSelection() {
    if (const auto index = m_viewModel->selectedIndex())
        setRange(m_range.showing(*index, count()));
    m_frame.hasNewSelection = true;
    polish();
    emit valueChanged();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changedValue(this, value());
        QAccessible::updateAccessibility(&changedValue);
        QAccessibleEvent changedWords(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changedWords);
    }
}

void TimelineChart::setHoveredIndex(std::optional<std::size_t> index) {
    if (index == m_hoveredIndex)
        return;
    m_hoveredIndex = index;
    m_tip.clear();
    if (index) {
        m_tip = tipOf(*index);
        const double position = layout().columns.position(*index);
        m_tipPosition = {layout().x(position),
                         barOf(*index).isEmpty() ? layout().plot.bottom() : barOf(*index).top()};
    }
    emit tipChanged();
    polish();
}

QString TimelineChart::tipOf(std::size_t index) {
    const auto& columns = painter().columns();
    const auto column =
        std::ranges::find(columns, layout().columns.position(index), &TimelineColumn::position);
    return timelinewords::tip(m_viewModel->entries()[index], m_viewModel->metric(),
                              column == columns.end() ? 1 : column->count);
}

void TimelineChart::setVisualFocus(bool isVisual) {
    if (isVisual == m_hasVisualFocus)
        return;
    m_hasVisualFocus = isVisual;
    emit visualFocusChanged();
}

double TimelineChart::value() const {
    if (!m_viewModel || !m_viewModel->selectedIndex())
        return 0;
    const auto indices = selectableIndices(m_viewModel->entries());
    return static_cast<double>(std::ranges::upper_bound(indices, *m_viewModel->selectedIndex()) -
                               indices.begin());
}

void TimelineChart::setValue(double value) {
    const auto indices = m_viewModel ? selectableIndices(m_viewModel->entries()) : std::vector<std::size_t>();
    if (!indices.empty() && !std::isnan(value))
        m_viewModel->select(
            indices[static_cast<std::size_t>(std::clamp(std::round(value), 1.0, maximumValue())) - 1]);
}

double TimelineChart::maximumValue() const {
    return m_viewModel ? static_cast<double>(
                             std::ranges::count(m_viewModel->entries(), false, &TimelineEntry::isFailure))
                       : 0;
}

void TimelineChart::focusInEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason);
}

void TimelineChart::focusOutEvent(QFocusEvent*) {
    setVisualFocus(false);
}

} // namespace tallyglass
