import QtQuick
import Tallyglass.Controls

// Lets what it holds appear and leave in a column: it fades while what stands below makes room.
Item {
    id: reveal
    property bool shown: true
    property real spacing: 0 // of the column
    default property alias items: holder.data

    property real progress: shown ? 1 : 0
    Behavior on progress {
        enabled: !Theme.reduceMotion
        NumberAnimation { duration: Theme.animationDuration; easing.type: Easing.OutCubic }
    }

    // Together with the column's spacing it grows from nothing.
    implicitHeight: (holder.height + spacing) * progress - spacing
    visible: progress > 0
    opacity: progress
    clip: progress < 1

    Column {
        id: holder
        width: parent.width
        y: (reveal.progress - 1) * Theme.unit * 2
    }
}
