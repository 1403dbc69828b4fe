import QtQuick
import Tallyglass.Controls
import Tallyglass.Timeline

// Explains why there are no sizes of backups, and how to get them.
Rectangle {
    id: card
    required property timelineHelperPrompt prompt
    required property bool copied
    signal copyRequested
    signal guideRequested
    signal refreshRequested

    readonly property real padding: Theme.unit * 1.5

    implicitHeight: texts.height + padding * 2
    radius: Theme.controlRadius
    color: Theme.controlBackground
    Accessible.role: Accessible.Grouping
    Accessible.name: prompt.title

    Symbol {
        id: symbol
        x: card.padding
        y: card.padding
        name: card.prompt.symbol
        color: Theme.accent
        size: Theme.titleSize * 1.2
    }
    Column {
        id: texts
        x: symbol.x + symbol.width + card.padding
        y: card.padding
        width: card.width - x - card.padding
        spacing: Theme.unit

        Headline {
            width: parent.width
            text: card.prompt.title
        }
        Label {
            width: parent.width
            text: card.prompt.text
            color: Theme.secondaryText
        }
        Flow {
            width: parent.width
            spacing: Theme.unit
            Button {
                width: Math.min(implicitWidth, texts.width)
                visible: !card.prompt.isInstalled
                systemImage: card.copied ? "checkmark" : "terminal.fill"
                text: card.copied ? qsTr("Copied — run it in Terminal") : qsTr("Copy command")
                onClicked: card.copyRequested()
            }
            Button {
                width: Math.min(implicitWidth, texts.width)
                visible: card.prompt.isInstalled
                systemImage: "sparkles"
                text: qsTr("Show me how")
                onClicked: card.guideRequested()
            }
            Button {
                width: Math.min(implicitWidth, texts.width)
                visible: card.prompt.isInstalled
                systemImage: "arrow.clockwise"
                text: qsTr("Refresh")
                onClicked: card.refreshRequested()
            }
        }
    }
}
