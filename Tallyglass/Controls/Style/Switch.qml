import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Turns something on or off at once.
T.Switch {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight)
    leftPadding: indicator.width + Theme.unit
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.onPressAction: toggleByUser()
    Accessible.onToggleAction: toggleByUser()

    function toggleByUser() {
        if (!enabled)
            return;
        toggle();
        toggled();
    }

    indicator: Rectangle {
        y: (control.height - height) / 2
        width: Theme.bodySize * 2.6
        height: Theme.bodySize * 1.5
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.secondaryText
        FocusRing {
            visible: control.visualFocus
            radius: parent.height / 2 + 3
        }
        Rectangle {
            x: control.visualPosition * (parent.width - width - 4) + 2
            y: 2
            width: height
            height: parent.height - 4
            radius: height / 2
            color: Theme.cardBackground
            Behavior on x {
                enabled: !Theme.reduceMotion
                NumberAnimation { duration: Theme.animationDuration; easing.type: Easing.OutCubic }
            }
        }
    }
    contentItem: Label {
        text: control.text
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
