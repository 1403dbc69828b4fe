import QtQuick
import Tallyglass.Controls

// Lets its children appear and disappear in a column: they fade while the items below move.
Item {
    id: reveal
    property bool revealed: true
    property real spacing: 0 // of the column
    default property alias items: holder.data

    property real progress: revealed ? 1 : 0
    Behavior on progress {
        enabled: !Theme.reduceMotion
        NumberAnimation { duration: Theme.animationDuration; easing.type: Easing.OutCubic }
    }

    // With the spacing of the column it grows from zero.
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
