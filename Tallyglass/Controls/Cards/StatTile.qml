import QtQuick
import Tallyglass.Controls

// One number: its label, its value and a caption. One text to a screen reader.
Item {
    id: tile
    property string label
    property string value
    property string caption
    property color tint: Theme.text

    implicitHeight: column.height
    Accessible.role: Accessible.StaticText
    Accessible.name: label
    Accessible.description: caption === "" ? value : value + ", " + caption

    Column {
        id: column
        width: parent.width
        spacing: Theme.unit / 4

        Caption {
            width: parent.width
            text: tile.label
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            text: tile.value
            color: tile.tint
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Caption {
            width: parent.width
            visible: text !== ""
            text: tile.caption
            Accessible.ignored: true
        }
    }
}
