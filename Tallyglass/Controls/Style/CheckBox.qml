import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Turns an option on or off. What is set decides `isOn`; a change of the user is told by `switched`.
T.CheckBox {
    id: control
    property bool isOn: false
    signal switched(bool isOn)

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight)
    leftPadding: indicator.width + Theme.unit
    checked: isOn
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    onClicked: flip()

    function flip() {
        const wanted = !isOn;
        checked = Qt.binding(() => isOn);
        if (enabled)
            switched(wanted);
    }

    indicator: Rectangle {
        y: (control.height - height) / 2
        width: Math.round(Theme.bodySize * 1.4)
        height: width
        radius: Theme.controlRadius / 2
        color: control.checked ? Theme.accent : Theme.cardBackground
        border.width: control.checked ? 0 : 1
        border.color: Theme.secondaryText
        FocusRing { shown: control.visualFocus }
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
