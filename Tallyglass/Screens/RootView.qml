import QtQuick
import Tallyglass

// The window's content: the sidebar, and beside it the screen of the section that is picked there. A screen is
// made when its section is first shown, and stays. Screens and sheets stand here by the names of their files, so
// that none is loaded before it is wanted.
FocusScope {
    id: root
    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard
    required property Alerts alerts
    required property UpdaterController updater
    property real sidebarWidth: 190

    readonly property alias shell: shellView
    /// The screen that is shown.
    readonly property Item screen: screens.children[shellView.sectionIndex].item
    /// The sheets that stand over the whole window, by the names that pictures of them get.
    readonly property var sheets: ({
        "about": ["AboutSheet.qml", {}],
        "access-guide-app": ["FullDiskAccessGuide.qml", sheetInputs],
        "access-guide-helper": ["FullDiskAccessGuide.qml", Object.assign({ forHelper: true }, sheetInputs)],
        "changes": ["BackupChangesView.qml", sheetInputs]
    })
    readonly property var sheetInputs: ({ model: root.model, helperSetup: root.helperSetup,
                                          pasteboard: root.pasteboard })

    /// Opens a sheet, which goes when it is closed.
    function present(name: string): var {
        const [file, inputs] = sheets[name];
        const component = Qt.createComponent(file);
        if (component.status === Component.Error) {
            Startup.fail(component.errorString());
            return null;
        }
        const sheet = component.createObject(root, inputs);
        sheet.closed.connect(() => sheet.destroy());
        sheet.open();
        return sheet;
    }

    component Screen: Loader {
        required property string file
        required property int index
        readonly property bool current: index === shellView.sectionIndex

        anchors.fill: parent
        visible: current
        onStatusChanged: if (status === Loader.Error) Startup.fail(Qt.createComponent(file).errorString())
        onCurrentChanged: enter()
        Component.onCompleted: enter()

        function enter() {
            if (!current)
                return;
            if (!item)
                setSource(file, { model: root.model, helperSetup: root.helperSetup, workspace: root.workspace,
                                  pasteboard: root.pasteboard });
            if (!sidebar.item?.hasKeyboard)
                forceActiveFocus(); // naming a reason would have all names of Qt looked up
        }
    }

    ShellView {
        id: shellView
        model: root.model
    }

    Rectangle {
        id: side
        // Larger text takes more, but leaves the screens most of a small window.
        width: Math.min(root.sidebarWidth * Math.max(1, Theme.textScale), root.width * 0.36)
        height: parent.height
        color: Theme.sidebarGround

        Later {
            id: sidebar
            anchors.fill: parent
            file: "Sidebar.qml"
            inputs: () => ({ shell: shellView })
        }
    }
    Rectangle {
        anchors.left: side.right
        width: 1
        height: parent.height
        z: 1
        color: Theme.line

        Later {
            id: handle
            anchors.fill: parent
            file: "SplitHandle.qml"
            inputs: () => ({ value: root.sidebarWidth })
            Connections {
                target: handle.item
                function onMoved(value) { root.sidebarWidth = value; }
            }
        }
    }
    Item {
        x: side.width + 1
        width: parent.width - x
        height: parent.height

        TopBar {
            id: topBar
            width: parent.width
            z: 1
            title: "Tallyglass"
            subtitle: shellView.content.subtitle

            Later {
                id: actions
                file: "TopBarActions.qml"
                inputs: () => ({ model: root.model, helperSetup: root.helperSetup, updater: root.updater })
                Connections {
                    target: actions.item
                    function onAboutRequested() { root.present("about"); }
                }
            }
        }
        Item {
            id: screens
            y: topBar.height
            width: parent.width
            height: parent.height - y

            // In the order of the sections.
            Screen { index: 0; file: "DashboardView.qml" }
            Screen { index: 1; file: "CompareView.qml" }
            Screen { index: 2; file: "FileHistoryView.qml" }
            Screen { index: 3; file: "ExclusionsView.qml" }
        }
    }
    Later {
        file: "ShellShortcuts.qml"
        inputs: () => ({ model: root.model, shell: shellView })
    }
    Later {
        file: "AlertHost.qml"
        inputs: () => ({ alerts: root.alerts })
    }
    Loader { // over all the rest, which isn't to be trusted when a part of it is missing
        anchors.fill: parent
        z: 2
        source: Startup.failure === "" ? "" : "LoadFailure.qml"
    }
}
