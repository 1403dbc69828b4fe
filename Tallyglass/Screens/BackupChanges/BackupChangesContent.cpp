#include "Tallyglass/Screens/BackupChanges/BackupChangesContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Screens/BackupChanges/ChangeTreeListModel.h"
#include "TallyglassKit/Access/NearestMatch.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class BackupChanges {
    Q_DECLARE_TR_FUNCTIONS(BackupChanges)
};

BackupChangesContent::Case caseOf(const AppModel& app, const BackupChangesModel& changes) {
    using enum BackupChangesContent::Case;
    if (app.fdaStatus() != FDAStatus::granted)
        return locked;
    if (changes.error())
        return failed;
    if (changes.isOldest())
        return oldest;
    // Before a load has words of its own, it waits for the cache.
    return changes.comparison() && !changes.progressText() ? results : running;
}

QString subtitle(const BackupChangesModel& changes, Date target) {
    if (!changes.resolvedFrom() || !changes.resolvedTo())
        return toQString(Fmt::timestamp(target));
    return toQString(Fmt::timestamp(*changes.resolvedFrom())) + QStringLiteral(" → ") +
           toQString(Fmt::timestamp(*changes.resolvedTo()));
}

void fillRunning(BackupChangesContent& content, const AppModel& app, const BackupChangesModel& changes) {
    content.progress = changes.progressText() ? toQString(*changes.progressText())
                                              : BackupChanges::tr("Opening the cache of results…");
    content.elapsed = toQString(changes.elapsedText());
    if (changes.bytesReceived() >= 1)
        content.received =
            BackupChanges::tr("%1 of results received").arg(sizeInWords(changes.bytesReceived()));
    const TMDestination* destination = app.selectedDestination();
    if (destination && destination->kind == TMDestination::Kind::network)
        content.networkNote = BackupChanges::tr(
            "This backup is on a network destination, so comparing it reads both backups over the "
            "network. It can take several minutes — the result is cached, so opening it again is instant.");
}

/// Time Machine's own record of the backup; null if it has none.
const BackupManifestEntry* manifestEntry(const AppModel& app, Date date) {
    const auto index = NearestMatch::index(date, app.manifest(), NearestMatch::backupTolerance,
                                           &BackupManifestEntry::completionDate);
    return index ? &app.manifest()[*index] : nullptr;
}

QList<StatTileContent> tilesOf(const BackupManifestEntry& entry) {
    return {{.label = BackupChanges::tr("Files changed"),
             .value = grouped(entry.changedCount),
             .caption = BackupChanges::tr("this backup")},
            {.label = BackupChanges::tr("On disk"),
             .value = sizeInWords(entry.changedPhysicalSize),
             .caption = BackupChanges::tr("%1 logical").arg(sizeInWords(entry.changedLogicalSize))}};
}

QList<StatTileContent> tilesOf(const Comparison& comparison) {
    return {{.label = BackupChanges::tr("Added"),
             .value = grouped(comparison.addedCount),
             .caption = sizeInWords(comparison.bytesAdded),
             .role = Theme::Role::healthy},
            {.label = BackupChanges::tr("Modified"),
             .value = grouped(comparison.modifiedCount),
             .caption = BackupChanges::tr("changed"),
             .role = Theme::Role::accent},
            {.label = BackupChanges::tr("Removed"),
             .value = grouped(comparison.removedCount),
             .caption = sizeInWords(comparison.bytesRemoved),
             .role = Theme::Role::critical},
            {.label = BackupChanges::tr("Net"),
             .value = toQString(comparison.netBytesFormatted()),
             .caption = BackupChanges::tr("size")}};
}

void fillResults(BackupChangesContent& content, const AppModel& app, const BackupChangesModel& changes,
                 Date target) {
    const Comparison& comparison = *changes.comparison();
    content.olderRoot = toQString(comparison.fromPath);
    content.newerRoot = toQString(comparison.toPath);
    if (const auto* entry = manifestEntry(app, changes.resolvedTo().value_or(target))) {
        content.tiles = tilesOf(*entry);
        content.summaryNote = BackupChanges::tr(
            "Time Machine's own totals for this backup. The list below is a browsable diff of size and "
            "timestamp changes, pulled on demand — open a folder to fetch what's inside. It only covers the "
            "folders you've opened, so it won't add up to the total above.");
    } else {
        content.tiles = tilesOf(comparison);
    }

    const auto count = static_cast<std::int64_t>(changes.visibleRows().size());
    content.shownCount = BackupChanges::tr("%1 shown").arg(grouped(count));
    if (count > ChangeTreeListModel::rowLimit)
        content.truncation = BackupChanges::tr("Showing the first %1 of %2. Narrow the filter to see more.")
                                 .arg(grouped(ChangeTreeListModel::rowLimit), grouped(count));
    if (count == 0) {
        content.messageSymbol = QStringLiteral("checkmark.circle");
        content.message = comparison.totalChanges() > 0
                              ? BackupChanges::tr("No changes match the current filters.")
                              : BackupChanges::tr("Nothing changed between these two backups.");
    }
}

} // namespace

QVariantList BackupChangesContent::tileList() const {
    return variants(tiles);
}

BackupChangesContent backupChangesContent(const AppModel& app, const BackupChangesModel& changes,
                                          Date target) {
    using enum BackupChangesContent::Case;
    BackupChangesContent content;
    content.shows = caseOf(app, changes);
    content.subtitle = subtitle(changes, target);
    switch (content.shows) {
    case locked:
        break;
    case failed:
        content.messageSymbol = QStringLiteral("exclamationmark.triangle.fill");
        content.message = toQString(*changes.error());
        break;
    case oldest:
        content.messageSymbol = QStringLiteral("clock.badge.questionmark");
        content.message =
            BackupChanges::tr("This is the oldest backup, so there is no earlier one to compare it against.");
        break;
    case running:
        fillRunning(content, app, changes);
        break;
    case results:
        fillResults(content, app, changes, target);
        break;
    }
    return content;
}

} // namespace tallyglass
