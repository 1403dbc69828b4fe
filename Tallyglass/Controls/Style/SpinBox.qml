import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A whole number that goes up and down: a label with the number, and two buttons. The arrow keys step too.
T.SpinBox {
    id: control
    required property string label // such as "Depth: 3"

    readonly property real stepWidth: Math.max(Theme.controlHeight, Theme.unit * 4)

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    rightPadding: stepWidth * 2 + 2 + Theme.unit
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.SpinBox
    Accessible.name: label
    Accessible.onIncreaseAction: stepByUser(1)
    Accessible.onDecreaseAction: stepByUser(-1)
    Keys.onLeftPressed: stepByUser(-1)
    Keys.onRightPressed: stepByUser(1)

    function stepByUser(by: int) {
        const before = value;
        if (enabled && by > 0)
            increase();
        else if (enabled)
            decrease();
        if (value !== before)
            valueModified();
    }

    component StepButton: Rectangle {
        required property string systemImage
        required property bool pressed
        required property bool hovered

        y: 1
        radius: Theme.controlRadius - 1
        color: enabled && (hovered || pressed) ? Theme.hoverBackground : "transparent"
        Symbol {
            anchors.centerIn: parent
            name: parent.systemImage
            color: Theme.text
            opacity: parent.enabled ? 1 : 0.35
        }
    }

    contentItem: Label {
        text: control.label
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    background: Item {
        Rectangle {
            anchors.right: parent.right
            width: control.stepWidth * 2 + 2
            height: parent.height
            radius: Theme.controlRadius
            color: Theme.controlBackground
            border.color: Theme.line
            FocusRing { visible: control.visualFocus }
            Rectangle {
                anchors.centerIn: parent
                width: 1
                height: parent.height - Theme.unit
                color: Theme.line
            }
        }
    }
    down.indicator: StepButton {
        x: control.width - width * 2 - 1
        width: control.stepWidth
        height: control.height - 2
        systemImage: "minus"
        pressed: control.down.pressed
        hovered: control.down.hovered
    }
    up.indicator: StepButton {
        x: control.width - width - 1
        width: control.stepWidth
        height: control.height - 2
        systemImage: "plus"
        pressed: control.up.pressed
        hovered: control.up.hovered
    }
}
