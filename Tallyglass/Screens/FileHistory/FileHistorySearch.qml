import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.FileHistory

// Takes the path to trace, and starts, follows and stops the scan.
Card {
    id: card
    required property FileHistoryViewModel viewModel
    readonly property fileHistoryContent content: viewModel.content

    title: qsTr("Trace a file through every backup")
    systemImage: "clock.arrow.circlepath"

    Caption {
        width: parent.width
        text: card.viewModel.hint
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
    }
    RowLayout {
        width: parent.width
        spacing: Theme.unit

        TextField {
            id: field
            Layout.fillWidth: true
            placeholderText: card.viewModel.examplePath
            text: card.viewModel.path
            Accessible.name: qsTr("Path")
            onTextEdited: card.viewModel.path = text
            onAccepted: card.viewModel.scan()
        }
        Button {
            id: recent
            systemImage: "chevron.down"
            hint: qsTr("Recent paths")
            enabled: card.viewModel.recentPaths.length > 0
            onClicked: recentMenu.openBelow(recent)

            Menu {
                id: recentMenu
                title: recent.hint
                Repeater {
                    model: card.viewModel.recentPaths
                    MenuItem {
                        required property string modelData
                        text: modelData
                        onTriggered: card.viewModel.trace(modelData)
                    }
                }
            }
        }
    }
    JobControls {
        width: parent.width
        running: card.content.isScanning
        progress: card.content.progressText
        onCancelRequested: card.viewModel.cancel()

        Button {
            highlighted: true
            text: qsTr("Trace")
            systemImage: "magnifyingglass"
            onClicked: card.viewModel.scan()
        }
        Button {
            text: qsTr("Choose…")
            systemImage: "filemenu.and.pointer.arrow"
            onClicked: card.viewModel.chooseItem()
        }
    }
}
