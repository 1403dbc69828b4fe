// What the dashboard says about what only works with Full Disk Access. A value.

#pragma once

#include "TallyglassKit/Access/FullDiskAccessProbe.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>

namespace tallyglass {

struct LockedFeature {
    Q_GADGET
    QML_VALUE_TYPE(lockedFeature)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)

public:
    QString symbol;
    QString text;

    friend bool operator==(const LockedFeature&, const LockedFeature&) = default;
};

struct UnlockCardContent {
    Q_GADGET
    QML_VALUE_TYPE(unlockCardContent)

    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QVariantList lockedFeatures READ lockedFeatureList)
    Q_PROPERTY(QString note MEMBER note)

public:
    bool shown = false; ///< while access isn't known to be granted
    QList<LockedFeature> lockedFeatures;
    QString note; ///< empty unless it is in doubt

    [[nodiscard]] QVariantList lockedFeatureList() const;

    friend bool operator==(const UnlockCardContent&, const UnlockCardContent&) = default;
};

[[nodiscard]] UnlockCardContent unlockCardContent(FDAStatus status);

} // namespace tallyglass
