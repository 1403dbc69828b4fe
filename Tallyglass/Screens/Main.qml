import QtQuick
import QtQuick.Controls.Basic
import Tallyglass

ApplicationWindow {
    width: 900
    height: 720
    minimumWidth: 720
    minimumHeight: 560
    visible: true
    title: "Tallyglass"
    color: Theme.windowGround
}
