import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Takes the text that a list is filtered by.
T.TextField {
    id: field

    implicitWidth: Theme.unit * 4 + Theme.bodySize * 14
    implicitHeight: Theme.controlHeight
    leftPadding: glass.width + Theme.unit * 1.5
    rightPadding: clear.visible ? clear.width + Theme.unit / 2 : Theme.unit
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
        FocusRing { shown: field.activeFocus }
    }
    Symbol {
        id: glass
        x: Theme.unit * 0.75
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        color: Theme.secondaryText
        size: Theme.bodySize * 1.3
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
    Button {
        id: clear
        anchors { right: parent.right; verticalCenter: parent.verticalCenter; margins: 2 }
        height: parent.height - 4
        visible: field.text !== ""
        kind: Button.Tool
        systemImage: "xmark"
        hint: qsTr("Clear")
        focusPolicy: Qt.TabFocus
        onClicked: {
            field.clear();
            field.textEdited();
            field.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}
