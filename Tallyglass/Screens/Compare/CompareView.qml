import QtQuick
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls

// Two backups are picked and compared; below stands what changed between them.
ScrollPage {
    id: page
    required property ScreenContext context

    maximumContentWidth: Theme.unit * 130
    onVisibleChanged: if (visible) state.appear()

    CompareViewModel {
        id: state
        context: page.context
    }

    Title {
        width: parent.width
        visible: !state.isLocked
        text: qsTr("Compare")
    }
    LockedNotice {
        parent: page // in the middle of what can be seen
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        visible: state.isLocked
        heading: qsTr("Comparing backups needs Full Disk Access")
        text: qsTr("tmutil cannot read backup contents without it, so there is nothing to diff.")
        onGuideRequested: page.context.openSheet(ScreenContext.AppAccessGuide)
    }
    ComparePicker {
        width: parent.width
        visible: !state.isLocked
        viewModel: state
    }
    Reveal {
        width: parent.width
        shown: !state.isLocked && state.error !== ""
        spacing: page.spacing
        ErrorBanner { width: parent.width; text: state.error }
    }
    CompareSummary {
        width: parent.width
        visible: !state.isLocked && state.hasSummary
        content: state.summary
    }
    CompareResults {
        width: parent.width
        visible: !state.isLocked && state.hasResults
        viewModel: state
        page: page
        context: page.context
    }
}
