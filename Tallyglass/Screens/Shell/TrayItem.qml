import QtQml
import QtQml.Models
import Qt.labs.platform
import Tallyglass.Shell

// The program's item in the desktop's tray. Its menu opens at a click; where a desktop tells a plain click from
// one for the menu, the plain one brings the window.
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
        // The number of entries as the model, so that a menu that is open changes in place.
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
