import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// The progress of a job, from 0 to 1.
T.ProgressBar {
    id: bar
    property string label

    Layout.fillWidth: true
    implicitWidth: Theme.unit * 20
    implicitHeight: Theme.unit
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    background: Rectangle {
        radius: height / 2
        color: Theme.track
    }
    property real drawnPosition: visualPosition
    Behavior on drawnPosition {
        enabled: !Theme.reduceMotion
        NumberAnimation { duration: Theme.animationDuration; easing.type: Easing.OutCubic }
    }
    contentItem: Item {
        Rectangle {
            width: Math.max(bar.drawnPosition * parent.width, bar.value > 0 ? height : 0)
            height: parent.height
            radius: height / 2
            color: Theme.accent
        }
    }
}
