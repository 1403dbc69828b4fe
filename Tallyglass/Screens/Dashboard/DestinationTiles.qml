import QtQuick
import Tallyglass.Controls

// A destination in numbers, side by side, or in a column where it is narrow.
Grid {
    id: tiles
    required property var contents
    readonly property real tileWidth: columns === 1 ? width : (width - columnSpacing * 2) / 3

    columns: width < Theme.unit * 36 * Theme.textScale ? 1 : 3
    columnSpacing: Theme.unit * 2
    rowSpacing: Theme.unit * 1.5

    Repeater {
        model: tiles.contents
        StatTile {
            required property statTileContent modelData
            width: tiles.tileWidth
            label: modelData.label
            value: modelData.value
            caption: modelData.caption
        }
    }
}
