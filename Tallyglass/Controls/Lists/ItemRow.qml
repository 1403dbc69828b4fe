import QtQuick
import Tallyglass.Controls

// A row of an ItemList: its background, what the pointer does, and one element for a screen reader. Its children
// are decoration to a screen reader unless they can be used.
FocusScope {
    id: row
    required property ItemList list
    required property int index
    property string label // to a screen reader, as is the description
    property string description
    property string toolTip
    property real inset: 0 // of the background
    signal doubleClicked

    readonly property bool current: ListView.isCurrentItem

    width: list.width
    ListView.onPooled: visible = false // or a screen reader would still find it
    ListView.onReused: visible = true

    Rectangle {
        anchors { fill: parent; leftMargin: row.inset; rightMargin: row.inset }
        radius: Theme.controlRadius
        color: row.current ? Theme.selectedBackground : hover.hovered ? Theme.hoverBackground : "transparent"
        FocusRing {
            anchors.margins: 0
            radius: Theme.controlRadius
            visible: row.activeFocus && !row.list.focusedByPointer
        }
    }
    Item {
        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.StaticText
        Accessible.name: row.label
        Accessible.description: row.description
        Accessible.focusable: true
        Accessible.selectable: true
        Accessible.selected: row.current
        Accessible.onPressAction: row.list.select(row.index)
    }
    HoverHandler { id: hover }
    TapHandler {
        onTapped: row.list.selectByPointer(row.index)
        onDoubleTapped: row.doubleClicked()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            const position = row.mapToItem(row.list, eventPoint.position);
            row.list.selectByPointer(row.index);
            row.list.contextMenuRequested(row.index, position.x, position.y);
        }
    }
    LazyToolTip {
        active: hover.hovered && row.toolTip !== ""
        text: row.toolTip
    }
}
