import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// One line of text.
T.TextField {
    id: field

    implicitWidth: Theme.unit * 4 + Theme.bodySize * 14
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit
    rightPadding: Theme.unit
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    font.pixelSize: Theme.bodySize
    selectByMouse: true
    Accessible.name: placeholderText

    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.cardBackground
        border.color: Theme.secondaryText
        FocusRing { visible: field.activeFocus }
    }
    Label {
        anchors { left: parent.left; right: parent.right; leftMargin: field.leftPadding; rightMargin: field.rightPadding }
        anchors.verticalCenter: parent.verticalCenter
        visible: field.text === "" && field.preeditText === ""
        text: field.placeholderText
        color: Theme.secondaryText
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
