import QtQuick
import Tallyglass.Controls

AlertSheet {
    title: qsTr("Tallyglass %1").arg(Qt.application.version)
    text: qsTr("Makes this computer's Time Machine backups visible.")
    systemImage: "clock.arrow.trianglehead.counterclockwise.rotate.90"
}
