import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// A check box in the form of a chip, for one kind of rows: a symbol and a word, filled while checked.
T.CheckBox {
    id: chip
    required property string systemImage
    property color symbolColor: Theme.accent

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit
    rightPadding: Theme.unit * 1.25
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: toggleByUser()
    Accessible.onToggleAction: toggleByUser()
    Keys.onReturnPressed: toggleByUser()
    Keys.onEnterPressed: toggleByUser()

    function toggleByUser() {
        if (!enabled)
            return;
        toggle();
        toggled();
    }

    contentItem: RowLayout {
        spacing: Theme.unit / 2
        Symbol {
            name: chip.systemImage
            color: chip.checked ? chip.symbolColor : Theme.secondaryText
        }
        Label {
            Layout.fillWidth: true
            text: chip.text
            color: chip.checked ? Theme.text : Theme.secondaryText
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: height / 2
        color: chip.hovered || chip.down ? Theme.hoverBackground : chip.checked ? Theme.selectedBackground : "transparent"
        border.width: chip.checked ? 0 : 1
        border.color: Theme.line
        FocusRing {
            visible: chip.visualFocus
            radius: parent.height / 2 + 3
        }
    }
}
