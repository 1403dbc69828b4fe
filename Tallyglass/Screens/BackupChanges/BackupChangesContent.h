// What the sheet shows that tells what changed in one backup. A value, made anew from the models; the rows of
// the list are ChangeTreeListModel's.

#pragma once

#include "Tallyglass/Controls/Cards/StatTileContent.h"
#include "TallyglassKit/Platform/Date.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>

namespace tallyglass {

class AppModel;
class BackupChangesModel;

struct BackupChangesContent {
    Q_GADGET
    QML_VALUE_TYPE(backupChangesContent)

    Q_PROPERTY(bool isLocked READ isLocked)
    Q_PROPERTY(bool isRunning READ isRunning)
    Q_PROPERTY(bool hasResults READ hasResults)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(QString messageSymbol MEMBER messageSymbol)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QString progress MEMBER progress)
    Q_PROPERTY(QString elapsed MEMBER elapsed)
    Q_PROPERTY(QString received MEMBER received)
    Q_PROPERTY(QString networkNote MEMBER networkNote)
    Q_PROPERTY(QVariantList tiles READ tileList)
    Q_PROPERTY(QString summaryNote MEMBER summaryNote)
    Q_PROPERTY(QString shownCount MEMBER shownCount)
    Q_PROPERTY(QString truncation MEMBER truncation)
    Q_PROPERTY(QString olderRoot MEMBER olderRoot)
    Q_PROPERTY(QString newerRoot MEMBER newerRoot)

public:
    /// The first that holds is shown.
    enum class Case { locked, failed, oldest, running, results };

    [[nodiscard]] bool isLocked() const { return shows == Case::locked; }
    [[nodiscard]] bool isRunning() const { return shows == Case::running; }
    [[nodiscard]] bool hasResults() const { return shows == Case::results; }
    [[nodiscard]] QVariantList tileList() const;

    Case shows = Case::running;
    QString subtitle; ///< the dates of the pair, or of the point that was picked

    /// What stands in the place of everything, or of an empty list; empty when neither holds.
    QString messageSymbol;
    QString message;

    // While it is running. Empty for what isn't to be said.
    QString progress;
    QString elapsed;
    QString received;
    QString networkNote;

    // The results.
    QList<StatTileContent> tiles;
    QString summaryNote; ///< empty unless Time Machine's own totals are known
    QString shownCount;
    QString truncation; ///< empty when all rows are listed
    QString olderRoot;  ///< the backups that were compared
    QString newerRoot;

    friend bool operator==(const BackupChangesContent&, const BackupChangesContent&) = default;
};

/// `target` is the point that was picked on the timeline.
[[nodiscard]] BackupChangesContent backupChangesContent(const AppModel& app,
                                                        const BackupChangesModel& changes, Date target);

} // namespace tallyglass
