#include "Tallyglass/Screens/Compare/CompareContent.h"

#include "Tallyglass/Controls/Lists/ChangeRowContent.h"
#include "Tallyglass/Controls/QtConversions.h"
#include "Tallyglass/Models/DiffModel.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class Compare {
    Q_DECLARE_TR_FUNCTIONS(Compare)
};

} // namespace

QVariantList CompareSummaryContent::tileList() const {
    return variants(tiles);
}
QVariantList CompareResultsContent::kindList() const {
    return variants(kinds);
}

ComparePickerContent comparePickerContent(const DiffModel& model) {
    ComparePickerContent content;
    content.unavailableReason = toQString(model.unavailableReason().value_or(""));
    content.isLooking = model.isLoadingBackups() && model.backups().empty();
    content.compareExtendedAttributes = model.compareExtendedAttributes();
    content.depth = static_cast<int>(model.depth());
    content.depthText = Compare::tr("Depth: %1").arg(content.depth);
    content.unlimitedDepth = model.unlimitedDepth();
    content.isRunning = model.progressText().has_value();
    content.progressText =
        model.progressText() ? toQString(*model.progressText()) : Compare::tr("Working…"); // while it leaves
    content.canRun = model.canRun();
    content.canRerun = model.comparison().has_value();
    return content;
}

CompareSummaryContent compareSummaryContent(const Comparison& comparison) {
    CompareSummaryContent content;
    content.tiles = {
        {Compare::tr("Added"), grouped(comparison.addedCount), sizeInWords(comparison.bytesAdded),
         roleOf(ChangeKind::added)},
        {Compare::tr("Modified"), grouped(comparison.modifiedCount), Compare::tr("changed"),
         roleOf(ChangeKind::modified)},
        {Compare::tr("Removed"), grouped(comparison.removedCount), sizeInWords(comparison.bytesRemoved),
         roleOf(ChangeKind::removed)},
        {Compare::tr("Net"), toQString(comparison.netBytesFormatted()), Compare::tr("size change"),
         Theme::Role::text},
    };
    if (comparison.isPartial)
        content.partialNote =
            Compare::tr("This comparison did not finish, so the results below are incomplete.");
    if (comparison.depth >= 1)
        content.depthNote =
            Compare::tr("Limited to depth %1 — changes nested deeper are not listed.").arg(comparison.depth);
    return content;
}

CompareResultsContent compareResultsContent(const DiffModel& model, std::int64_t metadataOnly) {
    CompareResultsContent content;
    content.searchText = toQString(model.searchText());
    content.contentOnly = model.showContentChangesOnly();
    for (const ChangeKind kind : allChangeKinds)
        content.kinds.append({toQString(label(kind)), toQString(symbolName(kind)), roleOf(kind),
                              model.kindFilter().contains(kind)});

    content.unfilteredCount =
        static_cast<int>(std::min(model.changes().size(), CompareResultsContent::rowLimit));
    const auto shown = model.visibleRows().size();
    const QString count = grouped(static_cast<std::int64_t>(shown));
    content.shownCount = Compare::tr("%1 shown").arg(count);
    if (metadataOnly >= 1)
        content.metadataNote =
            Compare::tr("%1 of %2 changes are metadata only (timestamps, extended attributes).")
                .arg(grouped(metadataOnly), grouped(static_cast<std::int64_t>(model.changes().size())));
    if (shown == 0)
        content.emptyNote = Compare::tr("No changes match the current filters.");
    if (shown > CompareResultsContent::rowLimit)
        content.limitNote =
            Compare::tr("Showing the first 1,000 of %1. Narrow the filter to see more.").arg(count);
    return content;
}

} // namespace tallyglass
