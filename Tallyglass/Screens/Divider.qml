import QtQuick
import Tallyglass

Rectangle {
    implicitHeight: 1
    color: Theme.line
    Accessible.ignored: true
}
