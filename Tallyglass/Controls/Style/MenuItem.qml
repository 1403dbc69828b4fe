import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

T.MenuItem {
    id: item
    property string shortcutText

    implicitWidth: ListView.view ? ListView.view.width : implicitContentWidth + leftPadding + rightPadding
    implicitHeight: visible ? Theme.controlHeight : 0
    leftPadding: Theme.unit
    rightPadding: Theme.unit
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.onPressAction: if (enabled) triggered()

    contentItem: RowLayout {
        spacing: Theme.unit * 2
        ElidedText {
            Layout.fillWidth: true
            text: item.text
            Accessible.ignored: true
        }
        Caption {
            visible: text !== ""
            text: item.shortcutText
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius - 2
        color: item.highlighted && item.enabled ? Theme.hoverBackground : "transparent"
    }
}
