import QtQuick
import QtQuick.Layouts
import Tallyglass

// What only works with Full Disk Access, and the way there.
Card {
    id: card
    required property unlockCardContent content
    signal guideRequested

    title: qsTr("Unlock backup contents")
    systemImage: "lock.open.trianglebadge.exclamationmark"

    TextLabel {
        text: qsTr("Everything above works without permission. These need Full Disk Access:")
        color: Theme.secondaryText
    }
    Stack {
        spacing: Theme.unit
        Repeater {
            model: card.content.lockedFeatures
            RowLayout {
                id: line
                required property lockedFeature modelData
                spacing: Theme.unit
                Symbol {
                    Layout.alignment: Qt.AlignTop
                    name: line.modelData.symbol
                    color: Theme.accent
                }
                TextLabel {
                    Layout.fillWidth: true
                    text: line.modelData.text
                }
            }
        }
    }
    Caption {
        visible: text !== ""
        text: card.content.note
    }
    Flow {
        AppButton {
            kind: AppButton.Prominent
            text: qsTr("Show me how")
            systemImage: "sparkles"
            onClicked: card.guideRequested()
        }
    }
}
