import QtQuick
import Tallyglass.Controls

// The handle between the sidebar and the screen, moved by the pointer, the arrow keys, Home and End. A double click
// restores the default width.
Item {
    id: handle
    required property real value
    readonly property real minimumValue: 170
    readonly property real maximumValue: 240
    readonly property real defaultValue: 190
    readonly property real stepSize: 10
    signal moved(real value)

    function moveTo(target: real) {
        value = Math.max(minimumValue, Math.min(maximumValue, target));
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: qsTr("Width of the sidebar")
    Accessible.onIncreaseAction: moveTo(value + stepSize)
    Accessible.onDecreaseAction: moveTo(value - stepSize)
    onValueChanged: {
        moveTo(value); // a screen reader may set any number
        moved(value);
    }
    Keys.onLeftPressed: moveTo(value - stepSize)
    Keys.onRightPressed: moveTo(value + stepSize)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            moveTo(minimumValue);
        else if (event.key === Qt.Key_End)
            moveTo(maximumValue);
        else
            return;
        event.accepted = true;
    }

    Rectangle {
        anchors { fill: parent; leftMargin: -1; rightMargin: -1 }
        visible: handle.activeFocus
        color: Theme.accent
    }
    MouseArea {
        property real start: 0
        anchors { fill: parent; leftMargin: -3; rightMargin: -3 }
        cursorShape: Qt.SplitHCursor
        preventStealing: true
        onPressed: mouse => start = mouse.x
        onPositionChanged: mouse => handle.moveTo(handle.value + mouse.x - start)
        onDoubleClicked: handle.moveTo(handle.defaultValue)
    }
}
