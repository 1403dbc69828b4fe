import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.Dashboard

// The features that need Full Disk Access, and how to grant it.
Card {
    id: card
    required property unlockCardContent content
    signal guideRequested

    title: qsTr("Unlock backup contents")
    systemImage: "lock.open.trianglebadge.exclamationmark"

    Label {
        width: parent.width
        text: qsTr("Everything above works without permission. These need Full Disk Access:")
        color: Theme.secondaryText
    }
    Column {
        id: features
        width: parent.width
        spacing: Theme.unit
        Repeater {
            model: card.content.lockedFeatures
            RowLayout {
                id: line
                required property lockedFeature modelData
                width: features.width
                spacing: Theme.unit
                Symbol {
                    Layout.alignment: Qt.AlignTop
                    name: line.modelData.symbol
                    color: Theme.accent
                }
                Label {
                    Layout.fillWidth: true
                    text: line.modelData.text
                }
            }
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: card.content.note
    }
    Flow {
        width: parent.width
        Button {
            highlighted: true
            text: qsTr("Show me how")
            systemImage: "sparkles"
            onClicked: card.guideRequested()
        }
    }
}
