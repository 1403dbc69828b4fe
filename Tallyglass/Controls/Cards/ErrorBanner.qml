import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// The text of the last error.
Rectangle {
    id: banner
    required property string text

    Layout.fillWidth: true
    implicitHeight: row.implicitHeight + Theme.unit * 3
    radius: Theme.radius
    color: Theme.cardBackground
    border.color: Theme.warning
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RowLayout {
        id: row
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: Theme.unit * 2 }
        spacing: Theme.unit * 1.5
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: "exclamationmark.triangle.fill"
            color: Theme.warning
        }
        SelectableText {
            Layout.fillWidth: true
            text: banner.text
        }
    }
}
