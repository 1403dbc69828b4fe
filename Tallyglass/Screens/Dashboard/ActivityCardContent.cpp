#include "Tallyglass/Screens/Dashboard/ActivityCardContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Access/BackupRate.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Health/HumanizeCamelCase.h"
#include "TallyglassKit/Platform/Text/NumberConversion.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

class ActivityCard {
    Q_DECLARE_TR_FUNCTIONS(ActivityCard)
};

QString title(const BackupStatus& status) {
    if (status.isStopping)
        return ActivityCard::tr("Stopping…");
    return status.phase ? toQString(humanizeCamelCase(*status.phase)) : ActivityCard::tr("Backing up");
}

QStringList speed(const BackupRate& rate) {
    QStringList parts;
    if (rate.bytesPerSecond <= 0)
        return parts;
    parts += ActivityCard::tr("%1/s").arg(sizeInWords(truncated(rate.bytesPerSecond)));
    const auto files = truncated(rate.filesPerSecond);
    if (files && *files >= 1)
        parts += ActivityCard::tr("%1 files/s").arg(*files);
    return parts;
}

QString detail(const BackupStatus& status, const std::optional<BackupRate>& rate) {
    if (status.bytesCopied.value_or(0) >= 1) {
        QStringList parts{ActivityCard::tr("%1 copied").arg(sizeInWords(status.bytesCopied))};
        if (rate)
            parts += speed(*rate);
        if (status.timeRemaining) {
            const std::string left = Fmt::duration(status.timeRemaining, DurationStyle::abbreviated);
            parts += ActivityCard::tr("about %1 left").arg(toQString(left));
        }
        return parts.join(QStringLiteral(" · "));
    }
    if (status.numberOfChangedItems.value_or(0) >= 1)
        return ActivityCard::tr("Preparing — %1 items found").arg(grouped(*status.numberOfChangedItems));
    return ActivityCard::tr("Preparing…");
}

} // namespace

ActivityCardContent activityCardContent(const BackupStatus& status, const std::optional<BackupRate>& rate) {
    ActivityCardContent content;
    content.title = title(status);
    content.detail = detail(status, rate);
    if (status.percent && std::isfinite(*status.percent)) {
        content.hasFraction = true;
        content.fraction = std::clamp(*status.percent, 0.0, 1.0);
        content.percent = QString::number(std::round(*status.percent * 100), 'f', 0) + QLatin1Char('%');
    }
    return content;
}

} // namespace tallyglass
