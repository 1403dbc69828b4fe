import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

T.ItemDelegate {
    id: row
    required property string systemImage
    required property bool focused

    implicitHeight: Theme.controlHeight + Theme.unit / 2
    leftPadding: Theme.unit
    rightPadding: Theme.unit
    focusPolicy: Qt.NoFocus
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: highlighted
    Accessible.focused: focused
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: Theme.unit
        Symbol {
            name: row.systemImage
            color: row.highlighted ? Theme.accent : Theme.secondaryText
        }
        ElidedText {
            Layout.fillWidth: true
            text: row.text
            font.weight: row.highlighted ? Font.DemiBold : Font.Normal
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: row.highlighted ? Theme.selectedBackground : row.hovered ? Theme.hoverBackground : "transparent"
        FocusRing {
            anchors.margins: 0
            radius: Theme.controlRadius
            visible: row.focused
        }
    }
}
