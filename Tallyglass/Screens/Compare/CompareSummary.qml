import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Controls

// A comparison in four numbers, and their limits.
Card {
    id: card
    required property compareSummaryContent content

    Accessible.name: qsTr("Summary")

    Grid { // not a layout of Qt's, which crashes when tiles go
        id: tiles
        width: parent.width
        columns: card.width < Theme.unit * 64 * Theme.textScale ? 2 : 4
        columnSpacing: Theme.unit * 2
        rowSpacing: Theme.unit * 1.5
        Repeater {
            model: card.content.tiles
            StatTile {
                required property statTileContent modelData
                width: Math.floor((tiles.width + tiles.columnSpacing) / tiles.columns) - tiles.columnSpacing
                label: modelData.label
                value: modelData.value
                caption: modelData.caption
                tint: Theme.textColors[modelData.role]
            }
        }
    }
    RowLayout {
        width: parent.width
        visible: card.content.partialNote !== ""
        spacing: Theme.unit
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: "exclamationmark.triangle.fill"
            color: Theme.warning
        }
        Label {
            Layout.fillWidth: true
            text: card.content.partialNote
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: card.content.depthNote
    }
}
