import QtQml
import QtQml.Models
import Qt.labs.platform
import Tallyglass.Shell

// The program's icon in the system tray. A click opens its menu; on desktops that have a separate click for the menu, a
// plain one shows the window.
SystemTrayIcon {
    id: item
    required property MenuBarViewModel viewModel

    visible: true
    tooltip: viewModel.accessibleName
    icon.source: viewModel.iconSource
    icon.name: ""
    onActivated: reason => {
        if (reason === SystemTrayIcon.Trigger || reason === SystemTrayIcon.DoubleClick)
            item.viewModel.open();
    }

    menu: Menu {
        id: menu
        // The model is the number of entries, so that an open menu changes in place.
        property Instantiator lines: Instantiator {
            model: item.viewModel.entries.length
            delegate: MenuItem {
                required property int index
                readonly property var entry: item.viewModel.entries[index] ?? null

                text: entry?.text ?? ""
                separator: entry?.isDivider ?? false
                enabled: entry?.isEnabled ?? false
                shortcut: entry?.shortcut ?? ""
                onTriggered: item.viewModel.activate(index)
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
