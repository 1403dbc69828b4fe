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
    Flow {
        width: parent.width
        visible: !card.content.isScanning
        spacing: Theme.unit
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
    RowLayout {
        width: parent.width
        visible: card.content.isScanning
        spacing: Theme.unit
        BusyIndicator {}
        Label {
            Layout.fillWidth: true
            text: card.content.progressText
            wrapMode: Text.NoWrap
            elide: Text.ElideMiddle
        }
        Button {
            text: qsTr("Cancel")
            onClicked: card.viewModel.cancel()
        }
    }
}
