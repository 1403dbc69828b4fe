// What the timeline says in words, by metric and entry. Each function is pure but for the program's
// translation and the user's locale; main thread only.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineEntries.h"

#include <QString>
#include <QStringList>

namespace tallyglass::timelinewords {

/// "Time gap", "Change size" and "Files changed", in the order of the picker.
[[nodiscard]] QStringList metricNames();
/// "Backup timeline, time gap": the name of the chart.
[[nodiscard]] QString accessibleName(TimelineMetric metric);
[[nodiscard]] QString accessibleHint();

/// What the y axis counts, and the label of one of its values.
[[nodiscard]] QString axisTitle(TimelineMetric metric);
[[nodiscard]] QString axisLabel(TimelineMetric metric, double value);

/// Above the chart: what the bars are, and which backup has none. Empty for intervals, which need no words.
[[nodiscard]] QString caption(TimelineMetric metric, const TimelineEntry* initialEntry);

/// "1 hour, 3 minutes since the previous backup, longer than usual". Empty for an entry without a value.
[[nodiscard]] QString valueText(const TimelineEntry& entry, TimelineMetric metric);
/// The entry's date, then its value if it has one.
[[nodiscard]] QString accessibleValue(const TimelineEntry& entry, TimelineMetric metric);

/// What an entry is, in the line below its date: its value, or why it has none.
[[nodiscard]] QString summary(const TimelineEntry& entry, TimelineMetric metric);
/// What the manifest knows of a backup: its file count and its sizes. For a backup that it doesn't know,
/// that it doesn't; empty for the first backup then, and for failures.
[[nodiscard]] QString manifestDetail(const TimelineEntry& entry);
/// All of that in lines, for the pointer. `columnCount` entries share the bar that it is over.
[[nodiscard]] QString tip(const TimelineEntry& entry, TimelineMetric metric, std::size_t columnCount);
[[nodiscard]] QString openHint(bool hasFullDiskAccess);

[[nodiscard]] QString initialBackupLabel();
[[nodiscard]] QString failureLabel();

} // namespace tallyglass::timelinewords
