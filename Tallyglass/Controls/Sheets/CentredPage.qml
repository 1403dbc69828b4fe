import QtQuick
import Tallyglass.Controls

// Shows one item in the centre, and scrolls when it is too high.
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
