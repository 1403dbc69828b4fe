import QtQuick
import QtQuick.Layouts
import Tallyglass

// Lets its one child appear and leave in a column: it fades while what stands below makes room.
Item {
    id: reveal
    property bool shown: true
    property real spacing: 0 // of the column
    default property alias items: holder.data

    property real progress: shown ? 1 : 0
    Behavior on progress {
        enabled: !Theme.reduceMotion
        NumberAnimation { duration: Theme.motion; easing.type: Easing.OutCubic }
    }

    Layout.fillWidth: true
    Layout.bottomMargin: (progress - 1) * spacing
    implicitHeight: holder.childrenRect.height * progress
    visible: progress > 0
    opacity: progress
    clip: progress < 1

    Item {
        id: holder
        width: parent.width
        y: (reveal.progress - 1) * Theme.unit * 2
        height: childrenRect.height
    }
}
