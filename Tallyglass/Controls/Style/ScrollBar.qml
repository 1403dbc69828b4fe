import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A thin scroll bar, visible while there is something to scroll.
T.ScrollBar {
    id: bar
    implicitWidth: contentItem.implicitWidth + padding * 2
    implicitHeight: contentItem.implicitHeight + padding * 2
    padding: 2
    visible: size < 1
    minimumSize: 0.05
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.secondaryText
        opacity: bar.pressed ? 0.8 : bar.hovered ? 0.6 : 0.3
    }
}
