#include "Tallyglass/Screens/Timeline/TimelineContent.h"

#include "Tallyglass/Screens/Timeline/TimelineWords.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>
#include <algorithm>

namespace tallyglass {

namespace {

class Timeline {
    Q_DECLARE_TR_FUNCTIONS(Timeline)
};

constexpr std::size_t leastEntries = 2;

TimelineHelperPrompt helperPrompt(bool isInstalled) {
    TimelineHelperPrompt prompt{
        .shown = true, .isInstalled = isInstalled, .title = {}, .symbol = {}, .text = {}};
    if (isInstalled) {
        prompt.title = Timeline::tr("Grant the helper Full Disk Access");
        prompt.symbol = QStringLiteral("lock.open.trianglebadge.exclamationmark");
        prompt.text = Timeline::tr(
            "The helper is installed but still needs Full Disk Access — Time Machine backups are protected "
            "even from root. Grant it and the sizes appear on their own.");
    } else {
        prompt.title = Timeline::tr("Per-backup sizes need a one-time helper");
        prompt.symbol = QStringLiteral("lock.badge.clock");
        prompt.text = Timeline::tr(
            "Time Machine records each backup's size in a file only root can read (with Full Disk Access). A "
            "small signed helper reads it and copies it somewhere Tallyglass can. It only reads your backup, "
            "and uninstalls cleanly.");
    }
    return prompt;
}

/// What occurs in the chart, in the order of how much of it there is.
QVariantList legend(const TimelineCircumstances& c) {
    QVariantList items;
    const auto add = [&](Theme::Role role, const char* symbol, const QString& text,
                         const QString& accessibleName = {}) {
        TimelineLegendItem item;
        item.role = role;
        item.symbol = QString::fromLatin1(symbol);
        item.text = text;
        item.accessibleName = accessibleName.isEmpty() ? text : accessibleName;
        items.append(QVariant::fromValue(item));
    };
    const auto any = [&](auto condition) { return std::ranges::any_of(c.entries, condition); };
    const bool isInterval = c.metric == TimelineMetric::interval;

    add(Theme::Role::accent, "", Timeline::tr("Backup"));
    if (isInterval && any(&TimelineEntry::isGap))
        add(Theme::Role::warning, c.differentiateWithoutColor ? "exclamationmark" : "",
            Timeline::tr("Longer than usual"));
    if (any(&TimelineEntry::isFailure))
        add(Theme::Role::critical, "xmark", timelinewords::failureLabel());
    if (!isInterval && initialEntry(c.entries))
        add(Theme::Role::accent, "star.fill", timelinewords::initialBackupLabel());
    const auto hasNoValue = [&](const TimelineEntry& entry) {
        return !entry.isFailure && !timelineValue(entry, c.metric) &&
               (isInterval || !entry.isInitialBackup());
    };
    if (c.differentiateWithoutColor && any(hasNoValue))
        add(Theme::Role::secondaryText, "circle.dotted", Timeline::tr("Backup without a value"));
    if (isInterval && c.medianInterval) {
        TimelineLegendItem rule;
        rule.role = Theme::Role::secondaryText;
        rule.isRule = true;
        rule.text =
            Timeline::tr("Typical: %1")
                .arg(QString::fromStdString(Fmt::duration(c.medianInterval, DurationStyle::abbreviated)));
        rule.accessibleName = Timeline::tr("Typical");
        items.append(QVariant::fromValue(rule));
    }
    return items;
}

} // namespace

QString TimelineContent::accessibleDescription() const {
    return accessibleValue.isEmpty() ? accessibleHint
                                     : Timeline::tr("%1. %2").arg(accessibleValue, accessibleHint);
}

TimelineContent timelineContent(const TimelineCircumstances& c) {
    TimelineContent content;
    if (c.entries.size() < leastEntries)
        return content;
    content.hasChart = true;
    content.caption = timelinewords::caption(c.metric, initialEntry(c.entries));
    if (c.metric != TimelineMetric::interval && !c.hasManifest)
        content.prompt = helperPrompt(c.helperExists);
    content.legend = legend(c);
    content.hint = timelinewords::openHint(c.hasFullDiskAccess);
    content.accessibleName = timelinewords::accessibleName(c.metric);
    content.accessibleHint = timelinewords::accessibleHint();
    if (const auto index = selectableIndex(c.entries, c.selectedIndex)) {
        const TimelineEntry& entry = c.entries[*index];
        content.date = QString::fromStdString(Fmt::timestamp(entry.date));
        content.summary = timelinewords::summary(entry, c.metric);
        content.detail = timelinewords::manifestDetail(entry);
        content.accessibleValue = timelinewords::accessibleValue(entry, c.metric);
    }
    return content;
}

} // namespace tallyglass
