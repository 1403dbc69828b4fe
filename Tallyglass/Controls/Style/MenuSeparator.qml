import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

T.MenuSeparator {
    implicitWidth: ListView.view ? ListView.view.width : 0
    implicitHeight: Theme.unit + 1
    Accessible.ignored: true
    contentItem: Item {
        Rectangle {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            height: 1
            color: Theme.line
        }
    }
}
