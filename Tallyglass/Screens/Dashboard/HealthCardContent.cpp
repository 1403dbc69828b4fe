#include "Tallyglass/Screens/Dashboard/HealthCardContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupHealth.h"
#include "TallyglassKit/Health/BackupResultCode.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>
#include <algorithm>

namespace tallyglass {

namespace {

class HealthCard {
    Q_DECLARE_TR_FUNCTIONS(HealthCard)
};

void describeLevel(HealthCardContent& content, BackupHealth::Level level) {
    switch (level) {
    case BackupHealth::Level::healthy:
        content.symbol = QStringLiteral("checkmark.circle.fill");
        content.role = Theme::Role::healthy;
        break;
    case BackupHealth::Level::warning:
        content.symbol = QStringLiteral("exclamationmark.triangle.fill");
        content.role = Theme::Role::warning;
        break;
    case BackupHealth::Level::critical:
        content.symbol = QStringLiteral("exclamationmark.octagon.fill");
        content.role = Theme::Role::critical;
        break;
    }
}

void describeResult(HealthCardContent& content, const BackupHealth& health) {
    if (health.lastBackupWasDeferred()) {
        content.resultHeading = HealthCard::tr("Last backup was skipped");
        content.resultSymbol = QStringLiteral("pause.circle.fill");
        content.resultRole = Theme::Role::warning;
    } else {
        content.resultHeading = HealthCard::tr("Last backup didn't complete");
        content.resultSymbol = QStringLiteral("exclamationmark.triangle.fill");
        content.resultRole = Theme::Role::critical;
    }
    const QString code = QString::number(health.lastBackupResult.value_or(0));
    if (const auto reason = health.lastBackupReason())
        content.resultCaption = HealthCard::tr("%1 (result code %2)").arg(toQString(*reason), code);
    else
        content.resultCaption =
            HealthCard::tr(
                "Time Machine recorded result code %1 for the most recent backup to this destination. "
                "This code isn't in our catalogue, so it confirms a problem without naming the cause.")
                .arg(code);
}

HealthRow rowOf(const BackupHealth::Gap& gap) {
    return {.text = toQString(Fmt::duration(gap.duration(), DurationStyle::abbreviated)),
            .caption = HealthCard::tr("· %1 → %2")
                           .arg(toQString(Fmt::timestamp(gap.start)), toQString(Fmt::timestamp(gap.end)))};
}

} // namespace

QVariantList HealthCardContent::failureList() const {
    return variants(failures);
}
QVariantList HealthCardContent::gapList() const {
    return variants(gaps);
}

HealthCardContent healthCardContent(const BackupHealth& health, const TMDestination& destination, Date now) {
    HealthCardContent content;
    describeLevel(content, health.level());
    content.summary = toQString(health.summary());
    content.cadence = HealthCard::tr("Last backup %1 · typically every %2")
                          .arg(toQString(Fmt::relative(destination.latestSnapshot(), now)),
                               toQString(Fmt::duration(health.medianInterval, DurationStyle::abbreviated)));
    if (health.lastBackupFailed())
        describeResult(content, health);

    for (const Date attempt : health.suspectedFailedAttempts)
        content.failures.append(
            {.text = toQString(Fmt::timestamp(attempt)),
             .caption = HealthCard::tr("· %1").arg(toQString(Fmt::relative(attempt, now)))});

    const auto gapCount = static_cast<qsizetype>(health.gaps.size());
    const auto shown = std::min(gapCount, HealthCardContent::shownGaps);
    for (auto gap = health.gaps.begin(); gap != health.gaps.begin() + shown; ++gap)
        content.gaps.append(rowOf(*gap));
    if (gapCount > shown)
        content.moreGaps = HealthCard::tr("and %1 more").arg(gapCount - shown);
    return content;
}

} // namespace tallyglass
