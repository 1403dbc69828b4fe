// The verdict on a destination's backups and the reasons behind it, in words. A value, made anew from the
// analysis.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"
#include "TallyglassKit/Platform/Date.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>

namespace tallyglass {

struct BackupHealth;
struct TMDestination;

/// A line of a list: what happened, and beside it when.
struct HealthRow {
    Q_GADGET
    QML_VALUE_TYPE(healthRow)

    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString caption MEMBER caption)

public:
    QString text;
    QString caption;

    friend bool operator==(const HealthRow&, const HealthRow&) = default;
};

struct HealthCardContent {
    Q_GADGET
    QML_VALUE_TYPE(healthCardContent)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString summary MEMBER summary)
    Q_PROPERTY(QString cadence MEMBER cadence)
    Q_PROPERTY(QString resultHeading MEMBER resultHeading)
    Q_PROPERTY(QString resultSymbol MEMBER resultSymbol)
    Q_PROPERTY(tallyglass::Theme::Role resultRole MEMBER resultRole)
    Q_PROPERTY(QString resultCaption MEMBER resultCaption)
    Q_PROPERTY(QVariantList failures READ failureList)
    Q_PROPERTY(QVariantList gaps READ gapList)
    Q_PROPERTY(QString moreGaps MEMBER moreGaps)

public:
    static constexpr qsizetype shownGaps = 6;

    QString symbol; ///< of the level
    Theme::Role role = Theme::Role::healthy;
    QString summary;
    QString cadence;

    QString resultHeading; ///< empty unless the last backup failed or was put off
    QString resultSymbol;
    Theme::Role resultRole = Theme::Role::critical;
    QString resultCaption;

    QList<HealthRow> failures; ///< suspected failed attempts, all of them
    QList<HealthRow> gaps;     ///< the first `shownGaps`
    QString moreGaps;          ///< how many gaps aren't shown; empty when all are

    [[nodiscard]] QVariantList failureList() const;
    [[nodiscard]] QVariantList gapList() const;

    friend bool operator==(const HealthCardContent&, const HealthCardContent&) = default;
};

[[nodiscard]] HealthCardContent healthCardContent(const BackupHealth& health,
                                                  const TMDestination& destination, Date now);

} // namespace tallyglass
