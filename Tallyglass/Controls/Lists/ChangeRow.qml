import QtQuick
import Tallyglass.Controls

// A changed path in a list: what happened, the name, the folder, the size. What doesn't fit is elided in the middle.
ItemRow {
    id: row
    required property changeRowContent change
    property real leftPadding: Theme.unit * 2
    property real rightPadding: Theme.unit * 2

    implicitHeight: Theme.rowHeight
    label: change.label
    description: change.value
    toolTip: name.truncated || folder.truncated ? change.path : ""

    Item {
        x: row.leftPadding
        width: row.width - row.leftPadding - row.rightPadding
        height: Theme.rowHeight

        Symbol {
            id: symbol
            anchors.verticalCenter: parent.verticalCenter
            name: row.change.symbol
            color: Theme.colors[row.change.role]
        }
        Label {
            id: name
            anchors { left: symbol.right; right: size.left; leftMargin: Theme.unit * 1.5; rightMargin: Theme.unit * 2 }
            anchors { bottom: parent.verticalCenter; bottomMargin: -Theme.captionSize * 0.1 }
            text: row.change.fileName
            wrapMode: Text.NoWrap
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
        Caption {
            id: folder
            anchors { left: name.left; right: name.right; top: name.bottom }
            text: row.change.parentPath
            wrapMode: Text.NoWrap
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
        Label {
            id: size
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: row.change.size
            color: Theme.secondaryText
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
}
