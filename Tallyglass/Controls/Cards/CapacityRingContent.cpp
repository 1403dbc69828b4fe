#include "Tallyglass/Controls/Cards/CapacityRingContent.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

class CapacityRing {
    Q_DECLARE_TR_FUNCTIONS(CapacityRing)
};

struct FillLevel {
    double from; ///< of this share in use on
    Theme::Role role;
    const char* symbol;
    const char* words;
};

constexpr FillLevel fillLevels[] = {
    {0.95, Theme::Role::critical, "exclamationmark.octagon.fill",
     QT_TRANSLATE_NOOP("CapacityRing", "nearly full")},
    {0.85, Theme::Role::warning, "exclamationmark.triangle.fill",
     QT_TRANSLATE_NOOP("CapacityRing", "running low")},
    {0.0, Theme::Role::healthy, "checkmark.circle.fill", QT_TRANSLATE_NOOP("CapacityRing", "plenty free")},
};

const FillLevel& fillLevel(double fraction) {
    const auto* level = std::find_if(std::begin(fillLevels), std::end(fillLevels),
                                     [=](const FillLevel& candidate) { return fraction >= candidate.from; });
    return level == std::end(fillLevels) ? *(level - 1) : *level;
}

} // namespace

CapacityRingContent capacityRingContent(std::optional<double> fraction, std::optional<std::int64_t> used,
                                        std::optional<std::int64_t> total, bool differentiateWithoutColor) {
    CapacityRingContent content;
    content.accessibleName = CapacityRing::tr("Destination capacity");
    content.text = QStringLiteral("—");
    content.accessibleValue = CapacityRing::tr("Unknown");
    if (used && total)
        content.detail = CapacityRing::tr("%1 of %2").arg(sizeInWords(used), sizeInWords(total));
    if (!fraction)
        return content;

    const FillLevel& level = fillLevel(*fraction);
    const QString percent = QString::number(std::lround(*fraction * 100));
    content.known = true;
    content.fraction = std::clamp(*fraction, 0.0, 1.0);
    content.role = level.role;
    content.text = percent + QLatin1Char('%');
    content.accessibleValue =
        CapacityRing::tr("%1 percent used, %2").arg(percent, CapacityRing::tr(level.words));
    if (differentiateWithoutColor)
        content.symbol = QString::fromLatin1(level.symbol);
    return content;
}

} // namespace tallyglass
