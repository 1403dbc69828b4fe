// Paints the timeline's picture in layers, so that a moved selection repaints none of the large ones: the
// ground with axes and marks, the bars, the one selected bar, and the rule of the typical cadence above all.
//
// Borrows the entries and the days for as long as it lives. Main thread only, for the sake of fonts.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineLayout.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <chrono>
#include <optional>
#include <span>

class QPainter;

namespace tallyglass {

class Theme;

/// Colours, fonts and settings of the moment.
struct TimelineStyle {
    QColor bar;
    QColor gap;
    QColor failure;
    QColor star;
    QColor quiet; ///< labels and marks that say little
    QColor line;
    QColor ground; ///< on which the picture lies
    QFont font;
    double symbolSize = 0; ///< of a mark with room around it
    bool differentiateWithoutColor = false;
    double pixelRatio = 1;

    TimelineStyle() = default;
    TimelineStyle(const Theme& theme, const QFont& base, double devicePixelRatio);
    friend bool operator==(const TimelineStyle&, const TimelineStyle&) = default;
};

/// What is drawn.
struct TimelineSubject {
    std::span<const TimelineEntry> entries;
    std::span<const std::chrono::local_days> days; ///< of the entries
    TimelineMetric metric = TimelineMetric::interval;
    std::optional<double> typicalHours = {}; ///< where the rule stands; only for intervals
};

class TimelinePainter {
public:
    TimelinePainter(const TimelineSubject& subject, const TimelineStyle& style, const TimelineRange& range,
                    QSizeF size);

    [[nodiscard]] const TimelineLayout& layout() const { return m_layout; }
    /// Those in sight, in order.
    [[nodiscard]] const std::vector<TimelineColumn>& columns() const { return m_columns; }
    [[nodiscard]] const TimelineStyle& style() const { return m_style; }

    /// As large as the item; where nothing is painted they are transparent.
    [[nodiscard]] QImage ground() const;
    [[nodiscard]] QImage bars() const;

    /// A part of the picture and where it belongs.
    struct Patch {
        QRectF rect;
        QImage image;
    };
    /// Absent when the entry has no bar or isn't in sight.
    [[nodiscard]] std::optional<Patch> selectedBar(std::size_t index) const;
    /// Absent when the rule isn't in sight.
    [[nodiscard]] std::optional<Patch> rule() const;

private:
    [[nodiscard]] QImage canvas(QSizeF size) const;
    [[nodiscard]] TimelineMeasures measures(const TimelineScale& scale) const;
    void paintAxes(QPainter& painter) const;
    void paintDates(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;
    void paintGapMarks(QPainter& painter) const;
    /// Of symbols side by side, by the x of their middles in order. Close ones are smaller, down to half of
    /// the usual size; closer still, they overlap.
    [[nodiscard]] std::vector<double> symbolSizes(std::span<const double> places) const;
    void paintBar(QPainter& painter, const QRectF& rect, bool isGap) const;
    /// The rightmost x from which a label of `width` pixels reaches to the left without a bar in it that is
    /// as high as `y`. The right end of the plot if there is no such place.
    [[nodiscard]] double freeRight(double width, double y) const;
    void paintSymbol(QPainter& painter, const char* name, QPointF center, double size,
                     const QColor& color) const;

    TimelineSubject m_subject;
    TimelineStyle m_style;
    TimelineLayout m_layout;
    std::vector<TimelineColumn> m_columns;
};

} // namespace tallyglass
