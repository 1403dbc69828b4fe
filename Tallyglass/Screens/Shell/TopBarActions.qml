import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Shell

// The actions of the window: start or stop a backup, refresh, and the menu.
Row {
    id: actions
    required property ScreenContext context

    spacing: Theme.unit

    BackupButton { context: actions.context }
    Button {
        flat: true
        systemImage: "arrow.clockwise"
        hint: qsTr("Refresh")
        onClicked: actions.context.model.refresh()
    }
    Button {
        id: menuButton
        flat: true
        systemImage: "line.3.horizontal"
        hint: qsTr("Menu")
        onClicked: {
            menu.active = true;
            (menu.item as Menu).openBelow(menuButton);
        }
    }
    Loader {
        id: menu
        active: false
        visible: false
        sourceComponent: Menu {
            title: menuButton.hint
            onAboutToShow: actions.context.helperSetup.lookForHelper()

            MenuItem {
                text: qsTr("About Tallyglass")
                onTriggered: actions.context.openSheet(ScreenContext.About)
            }
            MenuSeparator {}
            MenuItem {
                text: qsTr("Check for Updates…")
                enabled: actions.context.updater.canCheckForUpdates
                onTriggered: actions.context.updater.checkForUpdates()
            }
            MenuSeparator {}
            MenuItem {
                text: qsTr("Uninstall Tallyglass…")
                enabled: actions.context.helperSetup.helperExists
                onTriggered: actions.context.helperSetup.confirmAndUninstall()
            }
            MenuSeparator {}
            MenuItem {
                text: qsTr("Quit")
                shortcutText: "Ctrl+Q"
                onTriggered: Qt.quit()
            }
        }
    }
}
