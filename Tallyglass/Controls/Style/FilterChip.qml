import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// Lets one sort of rows be shown or hidden: a symbol and a word that are filled while it is on. What is set
// decides `isOn`; a change of the user is told by `flipped`.
T.CheckBox {
    id: toggle
    required property string systemImage
    required property bool isOn
    property color symbolColor: Theme.accent
    signal flipped

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit
    rightPadding: Theme.unit * 1.25
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    checked: isOn
    Accessible.name: text
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    onClicked: flip()
    Keys.onReturnPressed: flip()
    Keys.onEnterPressed: flip()

    function flip() {
        checked = Qt.binding(() => isOn);
        flipped();
    }

    contentItem: RowLayout {
        spacing: Theme.unit / 2
        Symbol {
            name: toggle.systemImage
            color: toggle.isOn ? toggle.symbolColor : Theme.secondaryText
        }
        Label {
            Layout.fillWidth: true
            text: toggle.text
            color: toggle.isOn ? Theme.text : Theme.secondaryText
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: height / 2
        color: toggle.hovered || toggle.down ? Theme.hoverBackground : toggle.isOn ? Theme.selectedBackground : "transparent"
        border.width: toggle.isOn ? 0 : 1
        border.color: Theme.line
        FocusRing {
            shown: toggle.visualFocus
            radius: parent.radius + 3
        }
    }
}
