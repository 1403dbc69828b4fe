import QtQuick
import Tallyglass.Controls

// One changed path: what happened, the name, where it is, how large. One text to a screen reader. All rows are
// equally high, so that the place of each in a long list is known; what doesn't fit is elided in the middle.
Item {
    id: row
    required property changeRowContent content
    readonly property bool truncated: name.truncated || folder.truncated

    implicitWidth: Theme.unit * 40
    implicitHeight: Theme.rowHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: content.label
    Accessible.description: content.value

    Symbol {
        id: symbol
        anchors.verticalCenter: parent.verticalCenter
        name: row.content.symbol
        color: Theme.colors[row.content.role]
    }
    Label {
        id: name
        anchors { left: symbol.right; right: size.left; leftMargin: Theme.unit * 1.5; rightMargin: Theme.unit * 2 }
        anchors { bottom: parent.verticalCenter; bottomMargin: -Theme.captionSize * 0.1 }
        text: row.content.fileName
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }
    Caption {
        id: folder
        anchors { left: name.left; right: name.right; top: name.bottom }
        text: row.content.parentPath
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }
    Label {
        id: size
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        text: row.content.size
        color: Theme.secondaryText
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
