import QtQuick
import Tallyglass.Controls
import Tallyglass.Dashboard

// The settings of Time Machine.
Card {
    id: card
    required property configurationCardContent content

    title: qsTr("Configuration")
    systemImage: "switch.2"

    Grid { // not a layout of Qt's, which crashes when rows go
        id: table
        width: parent.width
        flow: Grid.TopToBottom
        rows: card.content.rows.length
        columnSpacing: Theme.unit * 3
        rowSpacing: Theme.unit
        Repeater {
            model: card.content.rows
            Label {
                required property labelledValue modelData
                text: modelData.label
                color: Theme.secondaryText
                Accessible.ignored: true
            }
        }
        Repeater {
            model: card.content.rows
            Label {
                required property labelledValue modelData
                width: table.width - x
                text: modelData.value
                Accessible.name: modelData.label
                Accessible.description: modelData.value
            }
        }
    }
    Column {
        id: excluded
        width: parent.width
        visible: card.content.skipPaths.length > 0
        spacing: Theme.unit
        Divider { width: parent.width }
        Label {
            width: parent.width
            text: qsTr("Excluded from backup")
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Repeater {
            model: card.content.skipPaths
            SelectableText {
                required property string modelData
                width: excluded.width
                text: modelData
            }
        }
    }
}
