import QtQuick
import Tallyglass

// The program's one window.
Window {
    id: window
    objectName: "main"

    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard
    required property Alerts alerts
    required property UpdaterController updater
    readonly property alias root: rootView

    width: 900
    height: 720
    minimumWidth: 720
    minimumHeight: 560
    title: "Tallyglass"
    color: Theme.windowGround

    RootView {
        id: rootView
        // Sooner known than the size of the parent, so that nothing is laid out twice.
        width: window.width
        height: window.height
        focus: true
        model: window.model
        helperSetup: window.helperSetup
        workspace: window.workspace
        pasteboard: window.pasteboard
        alerts: window.alerts
        updater: window.updater
    }
}
