import QtQuick
import Tallyglass.Controls

// Shows where the keyboard is: an outline around its parent.
Rectangle {
    property bool shown: parent ? parent.visualFocus === true : false

    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.controlRadius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: shown
    Accessible.ignored: true
}
