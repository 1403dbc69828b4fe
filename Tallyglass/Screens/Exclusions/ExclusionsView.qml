import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Exclusions

// The items that the user watches with their exclusions, and the rules of the system. Items can be dropped anywhere on
// the screen.
ScrollPage {
    id: page
    required property ScreenContext context

    maximumContentWidth: Theme.unit * 130
    onVisibleChanged: if (visible) exclusionsViewModel.appear()

    ExclusionsViewModel {
        id: exclusionsViewModel
        context: page.context
    }

    Title {
        width: parent.width
        text: qsTr("Exclusions")
    }
    Card {
        width: parent.width
        title: qsTr("What's left out of backups")
        systemImage: "nosign"

        Label {
            width: parent.width
            text: qsTr("Excluding an item marks it with an extended attribute that Time Machine checks. The item's "
                       + "contents are never modified, and the change takes effect on the next backup.")
            color: Theme.secondaryText
        }
    }
    ManagedItems {
        width: parent.width
        viewModel: exclusionsViewModel
        pageHeight: page.height - page.margin * 2
    }
    SystemRules {
        width: parent.width
        visible: exclusionsViewModel.skipPaths.length > 0
        viewModel: exclusionsViewModel
    }
    FileDropArea {
        parent: page // the visible part
        anchors.fill: parent
        text: qsTr("Drop files or folders to track them here")
        onFilesDropped: urls => exclusionsViewModel.drop(urls)
    }
}
