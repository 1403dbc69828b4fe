// Where everything in the timeline's picture lies, in the item's pixels. From top to bottom: what the y axis
// counts, the plot, a lane for the marks of entries that have no bar, and the dates.
//
// A value without text or colour; any thread.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineColumns.h"
#include "Tallyglass/Screens/Timeline/TimelineTicks.h"

#include <QRectF>
#include <QSizeF>

namespace tallyglass {

/// What the layout has to leave room for.
struct TimelineMeasures {
    double lineHeight = 16; ///< of a label
    double labelWidth = 48; ///< of the widest label of the y axis
    double symbolSize = 14; ///< of a mark
    bool hasMarks = false;  ///< some entry has no bar
    bool marksBars = false; ///< bars may carry a symbol on top
    double pixelRatio = 1;  ///< device pixels in a pixel; edges are put on whole ones
    friend bool operator==(const TimelineMeasures&, const TimelineMeasures&) = default;
};

struct TimelineLayout {
    static constexpr double spacing = 6;
    static constexpr double widestBar = 44;

    TimelineRange range;
    TimelineScale scale;
    TimelineColumns columns;
    double pixelRatio = 1;
    QRectF title;
    QRectF plot;
    QRectF lane; ///< empty without marks
    QRectF dates;

    TimelineLayout() = default;
    TimelineLayout(QSizeF size, const TimelineMeasures& measures, const TimelineRange& visible,
                   const TimelineScale& yScale);

    /// How many steps of the y axis the height of a picture has room for.
    [[nodiscard]] static std::size_t scaleSteps(double height, double lineHeight);

    [[nodiscard]] double entryWidth() const;
    [[nodiscard]] double x(double position) const;
    [[nodiscard]] double position(double x) const;
    [[nodiscard]] double y(double value) const;

    /// The bar of a column: at least visible, at most as high as the plot.
    [[nodiscard]] QRectF bar(double position, double value) const;
    /// The whole height of the plot and the lane at a column, as wide as its bar and a little more.
    [[nodiscard]] QRectF band(double position) const;
    /// Whether most of a column lies in the plot.
    [[nodiscard]] bool isInSight(double position) const;
    [[nodiscard]] bool isEmpty() const { return plot.isEmpty() || range.length() <= 0; }

    friend bool operator==(const TimelineLayout&, const TimelineLayout&) = default;

private:
    [[nodiscard]] double onPixel(double coordinate) const;
    [[nodiscard]] double barWidth() const;
};

} // namespace tallyglass
