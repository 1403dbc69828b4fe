import QtQuick
import Tallyglass.Controls

// Shows one thing in the middle, and scrolls when there is too little room for it.
FocusScope {
    id: centred
    default property alias items: page.items

    ScrollPage {
        id: page
        anchors.fill: parent
        maximumContentWidth: Theme.unit * 60 * Theme.textScale
        topMargin: Math.max(0, (height - contentHeight) / 2)
    }
}
