// What the card of all backups shows, in words. Values, made anew from the model.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QString>
#include <QVariantList>

namespace tallyglass {

class BackfillModel;
struct AdjacentPair;

/// A comparison that failed.
struct BackfillFailure {
    Q_GADGET
    QML_VALUE_TYPE(backfillFailure)

    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString reason MEMBER reason)

public:
    QString title; ///< the two backups
    QString reason;

    friend bool operator==(const BackfillFailure&, const BackfillFailure&) = default;
};

struct BackfillContent {
    Q_GADGET
    QML_VALUE_TYPE(backfillContent)

    Q_PROPERTY(bool hasPairs MEMBER hasPairs)
    Q_PROPERTY(QString summary MEMBER summary)
    Q_PROPERTY(QString optionsText MEMBER optionsText)
    Q_PROPERTY(QString startText MEMBER startText)
    Q_PROPERTY(bool isRunning MEMBER isRunning)
    Q_PROPERTY(bool isPausing MEMBER isPausing)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString workText MEMBER workText)
    Q_PROPERTY(QString timeLeft MEMBER timeLeft)
    Q_PROPERTY(QString failedText MEMBER failedText)
    Q_PROPERTY(QVariantList failures READ failureList)
    Q_PROPERTY(QString moreFailures MEMBER moreFailures)
    Q_PROPERTY(QString firstBackup MEMBER firstBackup)
    Q_PROPERTY(QString lastBackup MEMBER lastBackup)
    Q_PROPERTY(QString error MEMBER error)
    Q_PROPERTY(bool preparesNewBackups MEMBER preparesNewBackups)

public:
    static constexpr qsizetype failureLimit = 20; ///< failures that are shown

    bool hasPairs = false;
    QString summary; ///< "41 of 59 comparisons ready"
    QString optionsText;
    QString startText; ///< of the button; empty if nothing is left to do
    bool isRunning = false;
    bool isPausing = false;
    double fraction = 0;
    QString workText;                ///< the pair at work
    QString timeLeft;                ///< empty until it can be told
    QString failedText;              ///< empty without failures
    QList<BackfillFailure> failures; ///< newest first
    QString moreFailures;            ///< empty when all are shown
    QString firstBackup;             ///< the date of the oldest backup
    QString lastBackup;
    QString error; ///< empty if there is none
    bool preparesNewBackups = false;

    [[nodiscard]] QVariantList failureList() const;

    friend bool operator==(const BackfillContent&, const BackfillContent&) = default;
};

[[nodiscard]] BackfillContent backfillContent(const BackfillModel& model);
/// Both backups and the state, such as "Nov 3, 2026 at 7:41 AM to Nov 4, 2026 at 7:41 AM: ready".
[[nodiscard]] QString pairText(const AdjacentPair& pair);

} // namespace tallyglass
