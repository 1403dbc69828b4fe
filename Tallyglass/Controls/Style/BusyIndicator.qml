import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Rotates while something is in progress, and is still with reduced motion. Screen readers ignore it unless it has a
// `label`.
T.BusyIndicator {
    id: control
    property string label
    property real size: Theme.bodySize * 1.4
    property color color: Theme.secondaryText

    readonly property int marks: 8
    property int step

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: label === ""
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    NumberAnimation on step { // in steps, so that few frames are drawn
        running: control.running && control.visible && !Theme.reduceMotion
        loops: Animation.Infinite
        from: 0
        to: control.marks
        duration: 1000
    }
    contentItem: Item {
        Item {
            width: control.size
            height: control.size
            anchors.centerIn: parent
            rotation: control.step * 360 / control.marks

            Repeater {
                model: control.marks
                Item {
                    id: mark
                    required property int index
                    anchors.fill: parent
                    rotation: index * 360 / control.marks
                    Rectangle {
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: Math.max(1.5, control.size * 0.1)
                        height: control.size * 0.28
                        radius: width / 2
                        color: control.color
                        antialiasing: true
                        opacity: 0.2 + 0.8 * (mark.index + 1) / control.marks
                    }
                }
            }
        }
    }
}
