#include "Tallyglass/Screens/Timeline/TimelineLayout.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

constexpr double leastBarHeight = 2; // so that a backup that changed nothing is seen

} // namespace

TimelineLayout::TimelineLayout(QSizeF size, const TimelineMeasures& measures, const TimelineRange& visible,
                               const TimelineScale& yScale)
    : range(visible), scale(yScale), pixelRatio(measures.pixelRatio) {
    const double left = std::ceil(measures.labelWidth + spacing);
    const double right = std::ceil(size.width() - 1);
    // The topmost label stands half above the plot, and so does a symbol on the highest bar.
    const double headroom =
        std::max(measures.lineHeight / 2 + 4, measures.marksBars ? measures.symbolSize : 0);
    const double laneHeight = measures.hasMarks ? measures.symbolSize + spacing : 0;

    title = QRectF(0, 0, size.width(), measures.lineHeight);
    const double top = std::ceil(title.bottom() + headroom);
    const double bottom =
        std::floor(std::max(top, size.height() - measures.lineHeight - spacing - laneHeight));
    plot = QRectF(left, top, std::max(0.0, right - left), bottom - top);
    lane = QRectF(left, bottom, plot.width(), laneHeight);
    dates = QRectF(0, lane.bottom() + spacing, size.width(), measures.lineHeight);
    columns = TimelineColumns::forEntryWidth(entryWidth());
}

std::size_t TimelineLayout::scaleSteps(double height, double lineHeight) {
    return static_cast<std::size_t>(std::clamp(height / (lineHeight * 3), 2.0, 6.0));
}

double TimelineLayout::entryWidth() const {
    return range.length() > 0 ? plot.width() / range.length() : 0;
}

double TimelineLayout::x(double position) const {
    return plot.left() + (position - range.low) * entryWidth();
}

double TimelineLayout::position(double x) const {
    return entryWidth() > 0 ? range.low + (x - plot.left()) / entryWidth() : range.low;
}

double TimelineLayout::y(double value) const {
    return plot.bottom() - std::clamp(value / scale.top, 0.0, 1.0) * plot.height();
}

double TimelineLayout::onPixel(double coordinate) const {
    return std::round(coordinate * pixelRatio) / pixelRatio;
}

double TimelineLayout::barWidth() const {
    const double column = entryWidth() * columns.entries;
    const double width = column < 6 ? column - 1 : std::min(column * 0.7, widestBar);
    return std::max(1 / pixelRatio, std::floor(width * pixelRatio) / pixelRatio);
}

QRectF TimelineLayout::bar(double position, double value) const {
    const double width = barWidth();
    const double top = std::min(y(value), plot.bottom() - leastBarHeight);
    return {onPixel(x(position) - width / 2), top, width, plot.bottom() - top};
}

QRectF TimelineLayout::band(double position) const {
    const double width = std::max(barWidth() + 4, 7.0);
    const QRectF rect(onPixel(x(position) - width / 2), plot.top(), width, lane.bottom() - plot.top());
    return rect.intersected(plot.united(lane));
}

bool TimelineLayout::isInSight(double position) const {
    const double middle = x(position);
    return middle >= plot.left() - 0.5 && middle <= plot.right() + 0.5;
}

} // namespace tallyglass
