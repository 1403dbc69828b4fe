import QtQuick
import Tallyglass.Controls

// A text field that filters a list, with a button that clears it.
TextField {
    id: field

    leftPadding: magnifier.width + Theme.unit * 1.5
    rightPadding: clearButton.visible ? clearButton.width + Theme.unit / 2 : Theme.unit

    Symbol {
        id: magnifier
        x: Theme.unit * 0.75
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        color: Theme.secondaryText
        size: Theme.bodySize * 1.3
    }
    Button {
        id: clearButton
        anchors { right: parent.right; verticalCenter: parent.verticalCenter; margins: 2 }
        height: parent.height - 4
        visible: field.text !== ""
        flat: true
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
