import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Shell

// The window of the program.
Window {
    id: window
    objectName: "main"

    required property ScreenContext context
    readonly property alias root: rootView

    width: 900
    height: 720
    minimumWidth: 720
    minimumHeight: 560
    title: "Tallyglass"
    color: Theme.windowBackground

    RootView {
        id: rootView
        anchors.fill: parent
        focus: true
        context: window.context
    }
}
