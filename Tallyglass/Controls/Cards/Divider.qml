import QtQuick
import Tallyglass.Controls

Rectangle {
    implicitHeight: 1
    color: Theme.line
    Accessible.ignored: true
}
