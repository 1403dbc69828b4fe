import QtQuick
import Tallyglass

// The program's one window.
Window {
    id: window
    objectName: "main"

    required property AppModel model
    readonly property alias root: rootView

    width: 900
    height: 720
    minimumWidth: 720
    minimumHeight: 560
    title: "Tallyglass"
    color: Theme.windowGround

    RootView {
        id: rootView
        anchors.fill: parent
        focus: true
        model: window.model
    }
}
