import QtQuick
import Tallyglass.Controls

// Says that something works for as long as it takes. With `label` a screen reader is told of it too; without, the
// words stand beside it. Where motion isn't wanted it stands still.
Item {
    id: spinner
    property string label
    property real size: Theme.bodySize * 1.4
    property color color: Theme.secondaryText

    readonly property int marks: 8
    property int step: 0

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: label === ""
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    NumberAnimation on step { // in steps, so that few frames are drawn
        running: spinner.visible && !Theme.reduceMotion
        loops: Animation.Infinite
        from: 0
        to: spinner.marks
        duration: 1000
    }
    Item {
        width: spinner.size
        height: spinner.size
        anchors.centerIn: parent
        rotation: spinner.step * 360 / spinner.marks

        Repeater {
            model: spinner.marks
            Item {
                id: mark
                required property int index
                anchors.fill: parent
                rotation: index * 360 / spinner.marks
                Rectangle {
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.max(1.5, spinner.size * 0.1)
                    height: spinner.size * 0.28
                    radius: width / 2
                    color: spinner.color
                    antialiasing: true
                    opacity: 0.2 + 0.8 * (mark.index + 1) / spinner.marks
                }
            }
        }
    }
}
