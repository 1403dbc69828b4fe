#include "Tallyglass/Screens/Timeline/TimelinePainter.h"

#include "Tallyglass/Controls/Theme/Symbols.h"
#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tallyglass/Screens/Timeline/TimelineWords.h"
#include "TallyglassKit/Platform/Text/Timestamps.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

class Timeline {
    Q_DECLARE_TR_FUNCTIONS(Timeline)
};

constexpr std::size_t mostDates = 7;
constexpr double roomToSymbol = 1.1; // a symbol leaves a margin around its glyph

double greatestValue(std::span<const TimelineEntry> entries, TimelineMetric metric,
                     const TimelineRange& range) {
    const auto [first, end] = range.indices(entries.size());
    double greatest = 0;
    for (const TimelineEntry& entry : entries.subspan(first, end - first))
        greatest = std::max(greatest, timelineValue(entry, metric).value_or(0));
    return greatest;
}

bool hasMark(const TimelineEntry& entry, TimelineMetric metric) {
    return entry.isFailure || (metric != TimelineMetric::interval && entry.isInitialBackup());
}

QFont scaled(QFont font, double pixelSize) {
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    return font;
}

} // namespace

TimelineStyle::TimelineStyle(const Theme& theme, const QFont& base, double devicePixelRatio)
    : bar(theme.accent()), gap(theme.warning()), failure(theme.critical()), star(theme.accent()),
      quiet(theme.secondaryText()), line(theme.line()), ground(theme.cardBackground()),
      font(scaled(base, theme.captionSize())), symbolSize(theme.captionSize() * 1.15),
      differentiateWithoutColor(theme.differentiatesWithoutColor()), pixelRatio(devicePixelRatio) {}

TimelinePainter::TimelinePainter(const TimelineSubject& subject, const TimelineStyle& style,
                                 const TimelineRange& range, QSizeF size)
    : m_subject(subject), m_style(style) {
    const double greatest =
        std::max(greatestValue(subject.entries, subject.metric, range), subject.typicalHours.value_or(0));
    const double lineHeight = QFontMetricsF(style.font).height();
    const TimelineScale scale =
        timelineScale(subject.metric, greatest, TimelineLayout::scaleSteps(size.height(), lineHeight));
    m_layout = TimelineLayout(size, measures(scale), range, scale);
    m_columns = m_layout.columns.visible(subject.entries, subject.metric, range);
}

TimelineMeasures TimelinePainter::measures(const TimelineScale& scale) const {
    const QFontMetricsF metrics(m_style.font);
    TimelineMeasures measures;
    measures.lineHeight = std::ceil(metrics.height());
    for (const double tick : scale.ticks())
        measures.labelWidth = std::max(
            measures.labelWidth, metrics.horizontalAdvance(timelinewords::axisLabel(m_subject.metric, tick)));
    measures.symbolSize = m_style.symbolSize;
    measures.marksBars = m_style.differentiateWithoutColor && m_subject.metric == TimelineMetric::interval;
    measures.hasMarks =
        m_style.differentiateWithoutColor || std::ranges::any_of(m_subject.entries, [&](const auto& entry) {
            return hasMark(entry, m_subject.metric);
        });
    measures.pixelRatio = m_style.pixelRatio;
    return measures;
}

QImage TimelinePainter::canvas(QSizeF size) const {
    const QSizeF pixels = size * m_style.pixelRatio;
    QImage image(std::max(1, static_cast<int>(std::ceil(pixels.width()))),
                 std::max(1, static_cast<int>(std::ceil(pixels.height()))),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_style.pixelRatio);
    image.fill(Qt::transparent);
    return image;
}

QImage TimelinePainter::ground() const {
    QImage image = canvas({m_layout.title.width(), m_layout.dates.bottom()});
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setFont(m_style.font);
    paintAxes(painter);
    paintDates(painter);
    paintMarks(painter);
    return image;
}

void TimelinePainter::paintAxes(QPainter& painter) const {
    const QRectF& plot = m_layout.plot;
    painter.setPen(m_style.quiet);
    painter.drawText(
        m_layout.title, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetricsF(m_style.font)
            .elidedText(timelinewords::axisTitle(m_subject.metric), Qt::ElideRight, m_layout.title.width()));
    const bool hasValues =
        std::ranges::any_of(m_columns, [](const auto& column) { return column.value.has_value(); });
    const double thickness = 1 / std::max(1.0, std::floor(m_style.pixelRatio));
    for (const double tick : m_layout.scale.ticks()) {
        const double y = std::round(m_layout.y(tick) * m_style.pixelRatio) / m_style.pixelRatio;
        painter.fillRect(QRectF(plot.left(), y - (tick > 0 ? 0 : thickness), plot.width(), thickness),
                         m_style.line);
        if (!hasValues)
            break; // an axis of nothing has only its ground
        const double height = m_layout.title.height();
        painter.drawText(QRectF(0, y - height / 2, plot.left() - TimelineLayout::spacing, height),
                         Qt::AlignRight | Qt::AlignVCenter, timelinewords::axisLabel(m_subject.metric, tick));
    }
}

void TimelinePainter::paintDates(QPainter& painter) const {
    const QFontMetricsF metrics(m_style.font);
    const auto label = [&](const TimelineDateTick& tick) {
        const Date date = m_subject.entries[tick.index].date;
        return QString::fromStdString(tick.isMonth ? formatMonthAndYear(date) : formatMonthAndDay(date));
    };
    // A label that is pushed in at an end takes up to half of its width from its neighbour.
    const double room =
        std::max(metrics.horizontalAdvance(QStringLiteral("Www 0000")) * 1.5 + m_layout.spacing * 2,
                 m_layout.plot.width() / mostDates);
    const double entryWidth = std::max(m_layout.entryWidth(), 1e-9);
    painter.setPen(m_style.quiet);
    for (const auto& tick : timelineDateTicks(m_subject.days, m_layout.range, room / entryWidth)) {
        const double middle = m_layout.x(m_layout.columns.position(tick.index));
        if (middle < m_layout.plot.left() || middle > m_layout.plot.right())
            continue;
        const QString text = label(tick);
        const double width = std::ceil(metrics.horizontalAdvance(text));
        const double left =
            std::clamp(middle - width / 2, 0.0, std::max(0.0, m_layout.dates.width() - width));
        painter.drawText(QRectF(left, m_layout.dates.top(), width + 1, m_layout.dates.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, text);
        painter.fillRect(QRectF(std::floor(middle), m_layout.lane.bottom(), 1, m_layout.spacing - 2),
                         m_style.line);
    }
}

void TimelinePainter::paintMarks(QPainter& painter) const {
    struct Mark {
        double x;
        const char* symbol;
        QColor color;
    };
    // A column has one mark, since it is too narrow for two: a failure is told nowhere else.
    const auto mark = [&](const TimelineColumn& column) -> std::optional<Mark> {
        const double x = m_layout.x(column.position);
        if (column.hasFailure)
            return Mark{x, "xmark", m_style.failure};
        if (column.hasInitialBackup)
            return Mark{x, "star.fill", m_style.star};
        if (column.hasBackupWithoutValue && m_style.differentiateWithoutColor)
            return Mark{x, "circle.dotted", m_style.quiet};
        return std::nullopt;
    };
    std::vector<Mark> marks;
    std::vector<double> places;
    for (const TimelineColumn& column : m_columns) {
        const auto found = m_layout.isInSight(column.position) ? mark(column) : std::nullopt;
        if (!found)
            continue;
        marks.push_back(*found);
        places.push_back(found->x);
    }
    const auto sizes = symbolSizes(places);
    for (std::size_t i = 0; i < marks.size(); ++i)
        paintSymbol(painter, marks[i].symbol, {marks[i].x, m_layout.lane.center().y() + 1}, sizes[i],
                    marks[i].color);
}

QImage TimelinePainter::bars() const {
    QImage image = canvas({m_layout.title.width(), m_layout.dates.bottom()});
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_layout.plot);
    for (const TimelineColumn& column : m_columns)
        if (column.value)
            paintBar(painter, m_layout.bar(column.position, *column.value), column.isGap);

    painter.setClipping(false);
    if (m_style.differentiateWithoutColor)
        paintGapMarks(painter);
    return image;
}

void TimelinePainter::paintGapMarks(QPainter& painter) const {
    std::vector<QPointF> tops;
    std::vector<double> places;
    for (const TimelineColumn& column : m_columns) {
        if (!column.isGap || !m_layout.isInSight(column.position))
            continue;
        tops.emplace_back(m_layout.x(column.position), m_layout.y(*column.value));
        places.push_back(tops.back().x());
    }
    const auto sizes = symbolSizes(places);
    for (std::size_t i = 0; i < tops.size(); ++i)
        paintSymbol(painter, "exclamationmark", tops[i] - QPointF(0, sizes[i] / 2), sizes[i], m_style.gap);
}

std::vector<double> TimelinePainter::symbolSizes(std::span<const double> places) const {
    const double usual = m_style.symbolSize;
    std::vector<double> sizes(places.size(), usual);
    for (std::size_t i = 1; i < places.size(); ++i) {
        const double room = std::clamp((places[i] - places[i - 1]) * roomToSymbol, usual / 2, usual);
        sizes[i - 1] = std::min(sizes[i - 1], room);
        sizes[i] = room;
    }
    return sizes;
}

std::optional<TimelinePainter::Patch> TimelinePainter::selectedBar(std::size_t index) const {
    const TimelineEntry& entry = m_subject.entries[index];
    const auto value = timelineValue(entry, m_subject.metric);
    const QRectF bar = value ? m_layout.bar(m_layout.columns.position(index), *value) : QRectF();
    const QRectF inSight = bar & m_layout.plot;
    if (inSight.isEmpty())
        return std::nullopt;
    // From a whole pixel on, so that the patch isn't resampled.
    const QRectF rect(inSight.left(), std::floor(inSight.top()), inSight.width(),
                      m_layout.plot.bottom() - std::floor(inSight.top()));
    Patch patch{rect, canvas(rect.size())};
    QPainter painter(&patch.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-rect.topLeft());
    paintBar(painter, bar, entry.isGap && m_subject.metric == TimelineMetric::interval);
    return patch;
}

double TimelinePainter::freeRight(double width, double y) const {
    const QRectF& plot = m_layout.plot;
    double right = plot.right();
    for (auto column = m_columns.rbegin(); column != m_columns.rend() && right > plot.left() + width;
         ++column) {
        const QRectF bar = column->value ? m_layout.bar(column->position, *column->value) : QRectF();
        if (bar.isEmpty() || bar.top() > y)
            continue;
        if (right - bar.right() > width + TimelineLayout::spacing)
            return right;
        right = bar.left();
    }
    return right - plot.left() > width + TimelineLayout::spacing ? right : plot.right();
}

std::optional<TimelinePainter::Patch> TimelinePainter::rule() const {
    const auto& hours = m_subject.typicalHours;
    if (m_subject.metric != TimelineMetric::interval || !hours || m_layout.isEmpty())
        return std::nullopt;
    const QFontMetricsF metrics(m_style.font);
    const QString text = Timeline::tr("typical cadence");
    const QSizeF label(metrics.horizontalAdvance(text) + TimelineLayout::spacing * 2, metrics.height() + 2);
    const QRectF& plot = m_layout.plot;
    const double y = std::round(m_layout.y(*hours));
    const bool isBelow = y - label.height() - 2 < plot.top();

    const double top = std::floor(isBelow ? y - 2 : y - label.height() - 2);
    Patch patch{QRectF(plot.left(), top, plot.width(), std::ceil(label.height()) + 4), {}};
    patch.image = canvas(patch.rect.size());
    QPainter painter(&patch.image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(-patch.rect.topLeft());
    QPen pen(m_style.quiet, 1);
    pen.setDashPattern({4, 4});
    painter.setPen(pen);
    painter.drawLine(QPointF(plot.left(), y + 0.5), QPointF(plot.right(), y + 0.5));

    const double boxTop = isBelow ? y + 2 : y - label.height() - 1;
    const double boxRight = freeRight(label.width(), boxTop + label.height() / 2) - 2;
    const QRectF box(boxRight - label.width(), boxTop, label.width(), label.height());
    QColor behind = m_style.ground;
    behind.setAlphaF(0.88F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(behind);
    painter.drawRoundedRect(box, 4, 4);
    painter.setFont(m_style.font);
    painter.setPen(m_style.quiet);
    painter.drawText(box, Qt::AlignCenter, text);
    return patch;
}

void TimelinePainter::paintBar(QPainter& painter, const QRectF& rect, bool isGap) const {
    const QColor& color = isGap ? m_style.gap : m_style.bar;
    const double radius = std::min({rect.width() / 2, rect.height(), 4.0});
    if (rect.width() < 4) { // too narrow for a soft top
        painter.fillRect(rect, color);
        return;
    }
    QPainterPath path;
    path.moveTo(rect.bottomLeft());
    path.lineTo(rect.left(), rect.top() + radius);
    path.quadTo(rect.topLeft(), {rect.left() + radius, rect.top()});
    path.lineTo(rect.right() - radius, rect.top());
    path.quadTo(rect.topRight(), {rect.right(), rect.top() + radius});
    path.lineTo(rect.bottomRight());
    painter.fillPath(path, color);
}

void TimelinePainter::paintSymbol(QPainter& painter, const char* name, QPointF center, double size,
                                  const QColor& color) const {
    Symbols::paint(painter, QString::fromLatin1(name),
                   QRectF(center.x() - size / 2, center.y() - size / 2, size, size), color);
}

} // namespace tallyglass
