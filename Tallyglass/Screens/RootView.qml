import QtQuick
import QtQuick.Layouts
import Tallyglass

// The window's content: the sidebar, and beside it the screen of the section that is picked there. A screen is
// made when its section is first shown, and stays.
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
    readonly property Item screen: screens.count > 0 ? screens.itemAt(shellView.sectionIndex)?.item ?? null : null
    /// The sheets that stand over the whole window, by the names that pictures of them get.
    readonly property var sheets: ({
        "about": aboutSheet,
        "access-guide-app": appGuide,
        "access-guide-helper": helperGuide,
        "changes": changesSheet
    })

    /// Opens a sheet, which goes when it is closed.
    function present(name: string): var {
        const sheet = sheets[name].createObject(root);
        sheet.closed.connect(() => sheet.destroy());
        sheet.open();
        return sheet;
    }

    /// In the order of the sections.
    readonly property list<Component> screenComponents: [
        Component {
            DashboardView {
                model: root.model
                helperSetup: root.helperSetup
                pasteboard: root.pasteboard
            }
        },
        Component {
            CompareView {
                model: root.model
                helperSetup: root.helperSetup
                workspace: root.workspace
                pasteboard: root.pasteboard
            }
        },
        Component { FileHistoryView {} },
        Component { ExclusionsView {} }
    ]

    ShellView {
        id: shellView
        model: root.model
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Sidebar {
            id: sidebar
            Layout.fillHeight: true
            // Larger text takes more, but leaves the screens most of a small window.
            Layout.preferredWidth: Math.min(root.sidebarWidth * Math.max(1, Theme.textScale), root.width * 0.36)
            sections: shellView.sections
            currentIndex: shellView.sectionIndex
            liteMode: shellView.content.liteMode
            onPicked: index => shellView.sectionIndex = index
        }
        SplitHandle {
            Layout.fillHeight: true
            z: 1
            value: root.sidebarWidth
            minimum: 170
            usual: 190
            maximum: 240
            onMoved: value => root.sidebarWidth = value
        }
        ColumnLayout {
            spacing: 0
            TopBar {
                Layout.fillWidth: true
                z: 1
                title: "Tallyglass"
                subtitle: shellView.content.subtitle

                BackupButton { model: root.model }
                AppButton {
                    kind: AppButton.Tool
                    systemImage: "arrow.clockwise"
                    hint: qsTr("Refresh")
                    onClicked: root.model.refresh()
                }
                AppButton {
                    id: menuButton
                    kind: AppButton.Tool
                    systemImage: "line.3.horizontal"
                    hint: qsTr("Menu")
                    onClicked: {
                        menu.active = true;
                        menu.item.openBelow(menuButton);
                    }
                }
            }
            Item {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Repeater {
                    id: screens
                    model: root.screenComponents
                    Loader {
                        required property Component modelData
                        required property int index
                        readonly property bool current: index === shellView.sectionIndex

                        anchors.fill: parent
                        visible: current
                        onCurrentChanged: enter()
                        Component.onCompleted: enter()

                        function enter() {
                            if (!current)
                                return;
                            sourceComponent = modelData;
                            if (!sidebar.hasKeyboard)
                                forceActiveFocus(Qt.OtherFocusReason);
                        }
                    }
                }
            }
        }
    }

    Repeater {
        model: shellView.sections.length
        Item {
            id: key
            required property int index
            Shortcut {
                sequence: "Ctrl+" + (key.index + 1)
                onActivated: shellView.sectionIndex = key.index
            }
        }
    }
    Shortcut {
        sequence: "F5"
        onActivated: root.model.refresh()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }

    Loader {
        id: menu
        active: false
        sourceComponent: AppMenu {
            onAboutToShow: root.helperSetup.lookForHelper()

            AppMenuItem {
                text: qsTr("About Tallyglass")
                onTriggered: root.present("about")
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Check for Updates…")
                enabled: root.updater.canCheckForUpdates
                onTriggered: root.updater.checkForUpdates()
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Uninstall Tallyglass…")
                enabled: root.helperSetup.helperExists
                onTriggered: root.helperSetup.confirmAndUninstall()
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Quit")
                shortcutText: "Ctrl+Q"
                onTriggered: Qt.quit()
            }
        }
    }
    Component {
        id: aboutSheet
        AlertSheet {
            title: qsTr("Tallyglass %1").arg(Qt.application.version)
            text: qsTr("Makes this computer's Time Machine backups visible.")
            systemImage: "clock.arrow.trianglehead.counterclockwise.rotate.90"
        }
    }
    Component {
        id: appGuide
        FullDiskAccessGuide {
            model: root.model
            helperSetup: root.helperSetup
            pasteboard: root.pasteboard
            target: FullDiskAccessGuide.App
        }
    }
    Component {
        id: helperGuide
        FullDiskAccessGuide {
            model: root.model
            helperSetup: root.helperSetup
            pasteboard: root.pasteboard
            target: FullDiskAccessGuide.Helper
        }
    }
    Component {
        id: changesSheet
        BackupChangesView {
            model: root.model
            helperSetup: root.helperSetup
            pasteboard: root.pasteboard
        }
    }
    AlertHost { alerts: root.alerts }
}
