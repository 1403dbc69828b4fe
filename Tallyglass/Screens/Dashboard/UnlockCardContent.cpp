#include "Tallyglass/Screens/Dashboard/UnlockCardContent.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class UnlockCard {
    Q_DECLARE_TR_FUNCTIONS(UnlockCard)
};

} // namespace

QVariantList UnlockCardContent::lockedFeatureList() const {
    return variants(lockedFeatures);
}

UnlockCardContent unlockCardContent(FDAStatus status) {
    UnlockCardContent content;
    content.shown = status != FDAStatus::granted;
    content.lockedFeatures = {
        {QStringLiteral("filemenu.and.pointer.arrow"), UnlockCard::tr("Browse the files inside any backup")},
        {QStringLiteral("arrow.left.arrow.right.square"),
         UnlockCard::tr("Compare two backups and see exactly what changed")},
        {QStringLiteral("clock.arrow.circlepath"),
         UnlockCard::tr("Track a single file's history across every backup")},
        {QStringLiteral("square.grid.3x3.fill"),
         UnlockCard::tr("Visualise which folders consume the most space")},
    };
    if (status == FDAStatus::indeterminate)
        content.note = UnlockCard::tr("Permission state could not be determined on this system.");
    return content;
}

} // namespace tallyglass
