#include "Tallyglass/Screens/Timeline/TimelineWords.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <cmath>

namespace tallyglass::timelinewords {

namespace {

class Timeline {
    Q_DECLARE_TR_FUNCTIONS(Timeline)
};

/// The whole number nearest to a value of an axis, of which the greatest may be just beyond 64 bits.
std::int64_t whole(double value) {
    return static_cast<std::int64_t>(std::clamp(std::round(value), -9.2e18, 9.2e18));
}

QString files(std::int64_t count) {
    const QString number = grouped(count);
    return count == 1 ? Timeline::tr("%1 file").arg(number) : Timeline::tr("%1 files").arg(number);
}

} // namespace

QStringList metricNames() {
    return {Timeline::tr("Time gap"), Timeline::tr("Change size"), Timeline::tr("Files changed")};
}

QString accessibleName(TimelineMetric metric) {
    return Timeline::tr("Backup timeline, %1").arg(metricNames().at(static_cast<int>(metric)).toLower());
}

QString accessibleHint() {
    return Timeline::tr("Adjust to move between backups, then activate to see file changes.");
}

QString axisTitle(TimelineMetric metric) {
    switch (metric) {
    case TimelineMetric::interval:
        return Timeline::tr("hours since previous backup");
    case TimelineMetric::changeSize:
        return Timeline::tr("on-disk bytes changed");
    case TimelineMetric::changeCount:
        return Timeline::tr("files changed");
    }
    return {};
}

QString axisLabel(TimelineMetric metric, double value) {
    switch (metric) {
    case TimelineMetric::interval:
        // Whole hours are grouped as all numbers are; parts of an hour need at most three digits.
        return Timeline::tr("%1h").arg(value == std::round(value) ? grouped(whole(value))
                                                                  : QLocale().toString(value, 'g', 3));
    case TimelineMetric::changeSize:
        return sizeInWords(whole(value));
    case TimelineMetric::changeCount:
        return grouped(whole(value));
    }
    return {};
}

QString caption(TimelineMetric metric, const TimelineEntry* initialEntry) {
    if (metric == TimelineMetric::interval)
        return {};
    QString text =
        metric == TimelineMetric::changeSize
            ? Timeline::tr(
                  "On-disk size of what each backup changed, from Time Machine's own records — no scanning.")
            : Timeline::tr("Files each backup copied, from Time Machine's own records — no scanning.");
    if (initialEntry)
        text += QLatin1Char(' ') +
                Timeline::tr("★ Initial full backup (%1, %2) has no bar: beside it the others would vanish.")
                    .arg(toQString(Fmt::timestamp(initialEntry->date)),
                         sizeInWords(initialEntry->manifest->changedPhysicalSize));
    return text;
}

QString valueText(const TimelineEntry& entry, TimelineMetric metric) {
    const auto value = timelineValue(entry, metric);
    if (!value)
        return {};
    switch (metric) {
    case TimelineMetric::interval: {
        const QString duration = toQString(Fmt::duration(*value * 3600, DurationStyle::full));
        return (entry.isGap ? Timeline::tr("%1 since the previous backup, longer than usual")
                            : Timeline::tr("%1 since the previous backup"))
            .arg(duration);
    }
    case TimelineMetric::changeSize:
        return Timeline::tr("%1 changed").arg(sizeInWords(entry.manifest->changedPhysicalSize));
    case TimelineMetric::changeCount:
        return Timeline::tr("%1 files changed").arg(grouped(entry.manifest->changedCount));
    }
    return {};
}

QString accessibleValue(const TimelineEntry& entry, TimelineMetric metric) {
    const QString date = toQString(Fmt::timestamp(entry.date));
    const QString value = valueText(entry, metric);
    return value.isEmpty() ? date : Timeline::tr("%1, %2").arg(date, value);
}

QString summary(const TimelineEntry& entry, TimelineMetric metric) {
    if (entry.isFailure)
        return failureLabel();
    if (entry.isFirstBackup())
        return Timeline::tr("First backup on this destination");
    return valueText(entry, metric);
}

QString manifestDetail(const TimelineEntry& entry) {
    if (entry.isFailure)
        return {};
    if (!entry.manifest)
        return entry.isFirstBackup() ? QString() : Timeline::tr("Not in the backup manifest");
    const BackupManifestEntry& row = *entry.manifest;
    return (row.isInitialBackup ? Timeline::tr("Initial full backup · %1 · %2 on disk · %3 of data")
                                : Timeline::tr("%1 · %2 on disk · %3 of data"))
        .arg(files(row.changedCount), sizeInWords(row.changedPhysicalSize),
             sizeInWords(row.changedLogicalSize));
}

QString tip(const TimelineEntry& entry, TimelineMetric metric, std::size_t columnCount) {
    QStringList lines{toQString(Fmt::timestamp(entry.date)), summary(entry, metric), manifestDetail(entry)};
    if (columnCount > 1)
        lines.append(Timeline::tr("One of %1 in this bar. Zoom in to tell them apart.")
                         .arg(grouped(static_cast<std::int64_t>(columnCount))));
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

QString openHint(bool hasFullDiskAccess) {
    return hasFullDiskAccess ? Timeline::tr("Click to see file changes")
                             : Timeline::tr("Click: needs Full Disk Access");
}

QString initialBackupLabel() {
    return Timeline::tr("Initial full backup");
}
QString failureLabel() {
    return Timeline::tr("Suspected failed backup");
}

} // namespace tallyglass::timelinewords
