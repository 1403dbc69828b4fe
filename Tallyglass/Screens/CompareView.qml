import QtQuick
import Tallyglass

// Two backups are picked and compared; below stands what changed between them.
ScrollPage {
    id: page
    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard
    property bool showingFDAGuide: false

    maximumContentWidth: Theme.unit * 130
    onVisibleChanged: if (visible) state.appear()

    CompareState {
        id: state
        model: page.model
    }
    Later { // a sheet over the window
        id: guide
        shown: page.showingFDAGuide
        file: "FullDiskAccessGuide.qml"
        inputs: () => ({ model: page.model, helperSetup: page.helperSetup, pasteboard: page.pasteboard, visible: true })
        Connections {
            target: guide.item
            function onClosed() { page.showingFDAGuide = false; }
        }
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
        onGuideRequested: page.showingFDAGuide = true
    }
    ComparePicker {
        width: parent.width
        visible: !state.isLocked
        view: state
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
        view: state
        page: page
        workspace: page.workspace
        pasteboard: page.pasteboard
    }
}
