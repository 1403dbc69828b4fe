import QtQuick
import Tallyglass.Controls

// Numbers in columns of equal width. Not a layout of Qt's, which crashes when tiles go.
Grid {
    id: tiles
    required property var contents // a list of statTileContent

    columnSpacing: Theme.unit * 2
    rowSpacing: Theme.unit * 1.5

    Repeater {
        model: tiles.contents
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
