import QtQuick
import Tallyglass

// What can be done from anywhere in the window: start or stop a backup, refresh, and the menu.
Row {
    id: actions
    required property AppModel model
    required property HelperSetup helperSetup
    required property UpdaterController updater
    signal aboutRequested

    spacing: Theme.unit

    BackupButton { model: actions.model }
    AppButton {
        kind: AppButton.Tool
        systemImage: "arrow.clockwise"
        hint: qsTr("Refresh")
        onClicked: actions.model.refresh()
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
    Loader {
        id: menu
        active: false
        visible: false
        sourceComponent: AppMenu {
            title: menuButton.hint
            onAboutToShow: actions.helperSetup.lookForHelper()

            AppMenuItem {
                text: qsTr("About Tallyglass")
                onTriggered: actions.aboutRequested()
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Check for Updates…")
                enabled: actions.updater.canCheckForUpdates
                onTriggered: actions.updater.checkForUpdates()
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Uninstall Tallyglass…")
                enabled: actions.helperSetup.helperExists
                onTriggered: actions.helperSetup.confirmAndUninstall()
            }
            AppMenuDivider {}
            AppMenuItem {
                text: qsTr("Quit")
                shortcutText: "Ctrl+Q"
                onTriggered: Qt.quit()
            }
        }
    }
}
