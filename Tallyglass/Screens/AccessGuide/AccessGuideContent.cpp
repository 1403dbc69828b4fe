#include "Tallyglass/Screens/AccessGuide/AccessGuideContent.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class AccessGuide {
    Q_DECLARE_TR_FUNCTIONS(AccessGuide)
};

QList<AccessStep> appSteps() {
    return {
        {QStringLiteral("arrow.up.forward.app"), AccessGuide::tr("Open Full Disk Access"),
         AccessGuide::tr("The button below opens System Settings › Privacy & Security › Full Disk Access.")},
        {QStringLiteral("hand.draw"), AccessGuide::tr("Drag Tallyglass into the list"),
         AccessGuide::tr("Drag the icon above straight onto the list — or click + and choose it from "
                         "Applications. If it's already listed, just turn its switch on.")},
        {QStringLiteral("switch.2"), AccessGuide::tr("Turn its switch on"),
         AccessGuide::tr("macOS may ask you to quit and reopen the app — that's expected.")},
        {QStringLiteral("checkmark.circle"), AccessGuide::tr("Come back here"),
         AccessGuide::tr("The app unlocks on its own the moment access is granted.")},
    };
}

QList<AccessStep> helperSteps() {
    return {
        {QStringLiteral("arrow.up.forward.app"), AccessGuide::tr("Open Full Disk Access & reveal the helper"),
         AccessGuide::tr(
             "The button below opens the settings pane and a Finder window with tallyglass-helper "
             "selected.")},
        {QStringLiteral("hand.draw"), AccessGuide::tr("Drag tallyglass-helper into the list"),
         AccessGuide::tr(
             "Drag the icon above — or the file from the Finder window that opens — onto the list. "
             "Its folder is hidden, so the + picker can't reach it; dragging is the way.")},
        {QStringLiteral("switch.2"), AccessGuide::tr("Turn its switch on"), {}},
        {QStringLiteral("clock.arrow.circlepath"), AccessGuide::tr("Come back and press Refresh"),
         AccessGuide::tr("Per-backup sizes appear within a moment; otherwise they arrive on the helper's "
                         "next run.")},
    };
}

void describeTarget(AccessGuideContent& content, AccessTarget target, bool didCopyPath) {
    switch (target) {
    case AccessTarget::app:
        content.title = AccessGuide::tr("Give Tallyglass access");
        content.text = AccessGuide::tr(
            "macOS won't ask for this, so it's added by hand — once. It takes about a minute.");
        content.item = QStringLiteral("Tallyglass");
        content.steps = appSteps();
        content.primaryText = AccessGuide::tr("Open Full Disk Access");
        content.secondaryText = AccessGuide::tr("Reveal app");
        content.secondarySymbol = QStringLiteral("finder");
        break;
    case AccessTarget::helper:
        content.title = AccessGuide::tr("Give the helper access");
        content.text = AccessGuide::tr("Per-backup sizes come from a file only the helper can read. This "
                                       "grant is separate from the app's.");
        content.item = QStringLiteral("tallyglass-helper");
        content.steps = helperSteps();
        content.primaryText = AccessGuide::tr("Open Full Disk Access & reveal the helper");
        content.secondaryText = didCopyPath ? AccessGuide::tr("Copied") : AccessGuide::tr("Copy path");
        if (didCopyPath)
            content.secondarySymbol = QStringLiteral("checkmark");
        break;
    }
}

} // namespace

QVariantList AccessGuideContent::stepList() const {
    return variants(steps);
}

AccessGuideContent accessGuideContent(AccessTarget target, bool isGranted, bool didCopyPath) {
    AccessGuideContent content;
    describeTarget(content, target, didCopyPath);
    content.illustration =
        AccessGuide::tr("Illustration: drag %1 into the Full Disk Access list and turn its switch on.")
            .arg(content.item);
    if (isGranted) {
        content.symbol = QStringLiteral("checkmark.shield.fill");
        content.role = Theme::Role::healthy;
        content.status = AccessGuide::tr("Access granted");
        content.statusSymbol = QStringLiteral("checkmark.circle.fill");
    } else {
        content.symbol = QStringLiteral("lock.shield");
        content.status = AccessGuide::tr("Waiting for access…");
    }
    return content;
}

} // namespace tallyglass
