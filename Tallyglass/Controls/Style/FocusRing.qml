import QtQuick
import Tallyglass.Controls

// The outline around its parent while that has the keyboard focus; `visible` says when.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.controlRadius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    Accessible.ignored: true
}
