import QtQuick
import Tallyglass

// Lets the line between the sidebar and the rest be dragged. A double click restores the usual width.
Item {
    id: handle
    required property real value
    property real minimum
    property real maximum
    property real usual
    signal moved(real value)

    Accessible.ignored: true

    MouseArea {
        property real start: 0
        anchors { fill: parent; leftMargin: -3; rightMargin: -3 }
        cursorShape: Qt.SplitHCursor
        preventStealing: true
        onPressed: mouse => start = mouse.x
        onPositionChanged: mouse => {
            const wanted = handle.value + mouse.x - start;
            handle.moved(Math.max(handle.minimum, Math.min(handle.maximum, wanted)));
        }
        onDoubleClicked: handle.moved(handle.usual)
    }
}
