import QtQuick
import Tallyglass

// Covers the window when a part of it can't be loaded, so that nobody takes the rest for all there is to know. Made
// of the plainest items, which need no other module of Qt's.
Rectangle {
    color: Theme.windowGround

    MouseArea { anchors.fill: parent } // what lies below gets no click
    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - Theme.unit * 6, Theme.unit * 80)
        spacing: Theme.unit * 1.5

        Headline {
            width: parent.width
            text: qsTr("A part of Tallyglass can't be shown")
        }
        TextLabel {
            width: parent.width
            text: qsTr("The program or Qt isn't completely installed. Install what is missing, then start Tallyglass again.")
        }
        TextLabel {
            width: parent.width
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            color: Theme.secondaryText
            text: Startup.failure
        }
    }
}
