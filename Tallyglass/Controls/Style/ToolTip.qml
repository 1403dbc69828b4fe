import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A text under the pointer that explains or completes its parent.
T.ToolTip {
    id: tip
    x: parent ? Math.max(0, (parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + Theme.unit / 2 : 0
    margins: Theme.unit
    padding: Theme.unit
    delay: 500
    implicitWidth: Math.min(unwrapped.implicitWidth, Theme.unit * 60) + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    contentItem: Label {
        text: tip.text
        font.pixelSize: Theme.captionSize
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere

        Label { // gives the width of the longest line, which wrapped text doesn't
            id: unwrapped
            visible: false
            text: tip.text
            font.pixelSize: Theme.captionSize
            wrapMode: Text.NoWrap
        }
    }
    background: Rectangle {
        color: Theme.cardBackground
        border.color: Theme.line
        radius: Theme.controlRadius
    }
}
