import QtQuick
import QtQuick.Layouts
import Tallyglass

// Says what the sizes of backups need when there are none, and how to get it.
Rectangle {
    id: card
    required property timelineHelperPrompt prompt
    required property bool copied
    signal copyRequested
    signal guideRequested
    signal refreshRequested

    Layout.fillWidth: true
    implicitHeight: row.implicitHeight + Theme.unit * 3
    radius: Theme.controlRadius
    color: Theme.controlGround
    Accessible.role: Accessible.Grouping
    Accessible.name: prompt.title

    RowLayout {
        id: row
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.unit * 1.5 }
        spacing: Theme.unit * 1.5

        Symbol {
            Layout.alignment: Qt.AlignTop
            name: card.prompt.symbol
            color: Theme.accent
            size: Theme.titleSize * 1.2
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit
            Headline {
                Layout.fillWidth: true
                text: card.prompt.title
            }
            TextLabel {
                Layout.fillWidth: true
                text: card.prompt.text
                color: Theme.secondaryText
            }
            Flow {
                Layout.fillWidth: true
                spacing: Theme.unit
                AppButton {
                    width: Math.min(implicitWidth, parent.width)
                    visible: !card.prompt.isInstalled
                    systemImage: card.copied ? "checkmark" : "terminal.fill"
                    text: card.copied ? qsTr("Copied — run it in Terminal") : qsTr("Copy command")
                    onClicked: card.copyRequested()
                }
                AppButton {
                    width: Math.min(implicitWidth, parent.width)
                    visible: card.prompt.isInstalled
                    systemImage: "sparkles"
                    text: qsTr("Show me how")
                    onClicked: card.guideRequested()
                }
                AppButton {
                    width: Math.min(implicitWidth, parent.width)
                    visible: card.prompt.isInstalled
                    systemImage: "arrow.clockwise"
                    text: qsTr("Refresh")
                    onClicked: card.refreshRequested()
                }
            }
        }
    }
}
