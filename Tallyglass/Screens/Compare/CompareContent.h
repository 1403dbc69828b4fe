// What the compare screen shows, in words. Values, made anew from the model.

#pragma once

#include "Tallyglass/Controls/Cards/StatTileContent.h"
#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <cstdint>

namespace tallyglass {

class DiffModel;
struct Comparison;

/// The card in which two backups are picked.
struct ComparePickerContent {
    Q_GADGET
    QML_VALUE_TYPE(comparePickerContent)

    Q_PROPERTY(QString unavailableReason MEMBER unavailableReason)
    Q_PROPERTY(bool isLooking MEMBER isLooking)
    Q_PROPERTY(int fromIndex MEMBER fromIndex)
    Q_PROPERTY(int toIndex MEMBER toIndex)
    Q_PROPERTY(bool compareExtendedAttributes MEMBER compareExtendedAttributes)
    Q_PROPERTY(int depth MEMBER depth)
    Q_PROPERTY(QString depthText MEMBER depthText)
    Q_PROPERTY(bool unlimitedDepth MEMBER unlimitedDepth)
    Q_PROPERTY(bool isRunning MEMBER isRunning)
    Q_PROPERTY(QString progressText MEMBER progressText)
    Q_PROPERTY(bool canRun MEMBER canRun)
    Q_PROPERTY(bool canRerun MEMBER canRerun)

public:
    QString unavailableReason; ///< empty when there are backups
    bool isLooking = false;    ///< for backups, of which none is known yet
    int fromIndex = -1;        ///< among the backups
    int toIndex = -1;
    bool compareExtendedAttributes = false;
    int depth = 0;
    QString depthText;
    bool unlimitedDepth = false;
    bool isRunning = false;
    QString progressText;
    bool canRun = false;
    bool canRerun = false;

    friend bool operator==(const ComparePickerContent&, const ComparePickerContent&) = default;
};

struct CompareSummaryContent {
    Q_GADGET
    QML_VALUE_TYPE(compareSummaryContent)

    Q_PROPERTY(QVariantList tiles READ tileList)
    Q_PROPERTY(QString partialNote MEMBER partialNote)
    Q_PROPERTY(QString depthNote MEMBER depthNote)

public:
    QList<StatTileContent> tiles;
    QString partialNote; ///< empty for a comparison that was finished
    QString depthNote;   ///< empty without a limit

    [[nodiscard]] QVariantList tileList() const;

    friend bool operator==(const CompareSummaryContent&, const CompareSummaryContent&) = default;
};

/// A kind of change that can be shown or hidden.
struct KindToggle {
    Q_GADGET
    QML_VALUE_TYPE(kindToggle)

    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(bool isOn MEMBER isOn)

public:
    QString label;
    QString symbol;
    Theme::Role role = Theme::Role::text;
    bool isOn = true;

    friend bool operator==(const KindToggle&, const KindToggle&) = default;
};

/// The list's filter and what is said about the list.
struct CompareResultsContent {
    Q_GADGET
    QML_VALUE_TYPE(compareResultsContent)

    Q_PROPERTY(QString searchText MEMBER searchText)
    Q_PROPERTY(bool contentOnly MEMBER contentOnly)
    Q_PROPERTY(QVariantList kinds READ kindList)
    Q_PROPERTY(int unfilteredCount MEMBER unfilteredCount)
    Q_PROPERTY(QString shownCount MEMBER shownCount)
    Q_PROPERTY(QString metadataNote MEMBER metadataNote)
    Q_PROPERTY(QString emptyNote MEMBER emptyNote)
    Q_PROPERTY(QString limitNote MEMBER limitNote)

public:
    static constexpr std::size_t rowLimit = 1000; ///< rows that are shown

    QString searchText;
    bool contentOnly = false;
    QList<KindToggle> kinds;
    int unfilteredCount = 0; ///< rows that a filter that keeps everything would show
    QString shownCount;
    QString metadataNote; ///< empty when all changes are changes of content
    QString emptyNote;    ///< empty unless no row passes the filter
    QString limitNote;    ///< empty when all rows are shown

    [[nodiscard]] QVariantList kindList() const;

    friend bool operator==(const CompareResultsContent&, const CompareResultsContent&) = default;
};

/// All but the indices, which the list of backups knows.
[[nodiscard]] ComparePickerContent comparePickerContent(const DiffModel& model);
[[nodiscard]] CompareSummaryContent compareSummaryContent(const Comparison& comparison);
/// `metadataOnly` is how many of the loaded rows are.
[[nodiscard]] CompareResultsContent compareResultsContent(const DiffModel& model, std::int64_t metadataOnly);

} // namespace tallyglass
