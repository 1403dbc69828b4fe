import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// What appears under the pointer to explain or complete what is there.
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

        Label { // as wide as its longest line, which a text that wraps doesn't tell
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
