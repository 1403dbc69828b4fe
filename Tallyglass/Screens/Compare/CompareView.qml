import QtQuick
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls

// Picks two backups, compares them and lists what changed between them.
ScrollPage {
    id: page
    required property ScreenContext context
    readonly property alias viewModel: compareViewModel

    maximumContentWidth: Theme.unit * 130
    onVisibleChanged: if (visible) compareViewModel.appear()

    CompareViewModel {
        id: compareViewModel
        context: page.context
    }

    Title {
        width: parent.width
        visible: !compareViewModel.isLocked
        text: qsTr("Compare")
    }
    LockedNotice {
        parent: page // centred in the visible part
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        visible: compareViewModel.isLocked
        heading: qsTr("Comparing backups needs Full Disk Access")
        text: qsTr("tmutil cannot read backup contents without it, so there is nothing to diff.")
        onGuideRequested: page.context.openSheet(ScreenContext.AppAccessGuide)
    }
    ComparePicker {
        id: picker
        width: parent.width
        visible: !compareViewModel.isLocked
        viewModel: compareViewModel
    }
    Reveal {
        width: parent.width
        revealed: !compareViewModel.isLocked && compareViewModel.error !== ""
        spacing: page.spacing
        ErrorBanner { width: parent.width; text: compareViewModel.error }
    }
    CompareSummary {
        width: parent.width
        visible: !compareViewModel.isLocked && compareViewModel.hasSummary
        content: compareViewModel.summary
    }
    CompareResults {
        width: parent.width
        visible: !compareViewModel.isLocked && compareViewModel.hasResults
        viewModel: compareViewModel
        pageHeight: page.height - page.margin * 2
        context: page.context
    }
    BackfillCard {
        width: parent.width
        visible: !compareViewModel.isLocked && hasPairs
        context: page.context
        onPairOpened: page.bringIntoView(picker)
    }
}
