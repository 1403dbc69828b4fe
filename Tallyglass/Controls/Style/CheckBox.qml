import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Turns an option on or off.
T.CheckBox {
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
        width: Math.round(Theme.bodySize * 1.4)
        height: width
        radius: Theme.controlRadius / 2
        color: control.checked ? Theme.accent : Theme.cardBackground
        border.width: control.checked ? 0 : 1
        border.color: Theme.secondaryText
        FocusRing { visible: control.visualFocus }
        Symbol {
            anchors.centerIn: parent
            visible: control.checked
            name: "checkmark"
            size: parent.width * 0.85
            color: Theme.onAccent
        }
    }
    contentItem: Label {
        text: control.text
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
