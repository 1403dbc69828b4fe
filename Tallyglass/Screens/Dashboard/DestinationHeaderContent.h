// What the head of the dashboard says about a destination: its name and kind, how full it is and how many
// backups it holds. Values, made anew from the destination.

#pragma once

#include "Tallyglass/Controls/Cards/CapacityRingContent.h"
#include "Tallyglass/Controls/Cards/StatTileContent.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>

namespace tallyglass {

struct TMDestination;

struct DestinationHeaderContent {
    Q_GADGET
    QML_VALUE_TYPE(destinationHeaderContent)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString url MEMBER url)
    Q_PROPERTY(bool isEncrypted MEMBER isEncrypted)
    Q_PROPERTY(tallyglass::CapacityRingContent ring MEMBER ring)

public:
    QString symbol; ///< by the kind of destination
    QString name;
    QString url;              ///< empty for a destination that isn't on the network
    bool isEncrypted = false; ///< known to be
    CapacityRingContent ring;

    friend bool operator==(const DestinationHeaderContent&, const DestinationHeaderContent&) = default;
};

[[nodiscard]] DestinationHeaderContent destinationHeaderContent(const TMDestination& destination,
                                                                bool differentiateWithoutColor);

/// What is used, what is free, and the number of backups.
[[nodiscard]] QList<StatTileContent> destinationTiles(const TMDestination& destination);

} // namespace tallyglass
