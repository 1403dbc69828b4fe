import QtQml
import QtQml.Models
import Qt.labs.platform
import Tallyglass

// The program's item in the desktop's tray. Its menu opens at a click; where a desktop tells a plain click from
// one for the menu, the plain one brings the window.
SystemTrayIcon {
    id: item
    required property MenuBarView view

    visible: true
    tooltip: view.accessibleName
    icon.source: view.iconSource
    icon.name: ""
    onActivated: reason => {
        if (reason === SystemTrayIcon.Trigger || reason === SystemTrayIcon.DoubleClick)
            item.view.open();
    }

    menu: Menu {
        id: menu
        // The number of entries as the model, so that a menu that is open changes in place.
        property Instantiator lines: Instantiator {
            model: item.view.entries.length
            delegate: MenuItem {
                required property int index
                readonly property var entry: item.view.entries[index] ?? null

                text: entry?.text ?? ""
                separator: entry?.isDivider ?? false
                enabled: entry?.isEnabled ?? false
                shortcut: entry?.shortcut ?? ""
                onTriggered: item.view.activate(index)
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
