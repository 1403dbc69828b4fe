#include "Tallyglass/Screens/Dashboard/DestinationHeaderContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Platform/Text/Timestamps.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class DestinationHeader {
    Q_DECLARE_TR_FUNCTIONS(DestinationHeader)
};

} // namespace

DestinationHeaderContent destinationHeaderContent(const TMDestination& destination,
                                                  bool differentiateWithoutColor) {
    DestinationHeaderContent content;
    content.symbol = destination.kind == TMDestination::Kind::network
                         ? QStringLiteral("externaldrive.connected.to.line.below.fill")
                         : QStringLiteral("externaldrive.fill");
    content.name = toQString(destination.displayName());
    content.url = toQString(destination.networkURL.value_or(""));
    content.isEncrypted = destination.isEncrypted.value_or(false);
    content.ring = capacityRingContent(destination.usedFraction(), destination.bytesUsed,
                                       destination.totalBytes(), differentiateWithoutColor);
    return content;
}

QList<StatTileContent> destinationTiles(const TMDestination& destination) {
    const StatTileContent used{.label = DestinationHeader::tr("Used"),
                               .value = sizeInWords(destination.bytesUsed),
                               .caption =
                                   DestinationHeader::tr("of %1").arg(sizeInWords(destination.totalBytes()))};
    const StatTileContent free{.label = DestinationHeader::tr("Free"),
                               .value = sizeInWords(destination.bytesAvailable),
                               .caption = {}};
    StatTileContent backups{.label = DestinationHeader::tr("Backups"),
                            .value = QString::number(destination.snapshotDates.size()),
                            .caption = {}};
    if (!destination.snapshotDates.empty())
        backups.caption = DestinationHeader::tr("since %1")
                              .arg(toQString(formatMonthAndDay(destination.snapshotDates.front())));
    return {used, free, backups};
}

} // namespace tallyglass
