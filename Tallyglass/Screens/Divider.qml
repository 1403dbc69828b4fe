import QtQuick
import QtQuick.Layouts
import Tallyglass

Rectangle {
    Layout.fillWidth: true
    implicitHeight: 1
    color: Theme.line
    Accessible.ignored: true
}
