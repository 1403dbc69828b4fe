import QtQuick
import Tallyglass.Controls
import Tallyglass.Exclusions

// What can be done with a watched item.
Menu {
    id: menu
    required property ExclusionsViewModel viewModel
    property exclusionRowContent status
    signal stopTracking

    title: status.path

    /// Opens it for a path, at a point of `anchor`.
    function openFor(path: string, anchor: Item, x: real, y: real) {
        status = viewModel.rows.itemAt(path);
        popup(anchor, x, y);
    }

    MenuItem {
        text: qsTr("Copy Path")
        shortcutText: "Ctrl+C"
        onTriggered: menu.viewModel.copy(menu.status.path)
    }
    MenuItem {
        text: qsTr("Show in File Manager")
        enabled: menu.status.exists
        onTriggered: menu.viewModel.reveal(menu.status.path)
    }
    MenuSeparator {}
    MenuItem {
        text: menu.status.toggleText
        shortcutText: qsTr("Space")
        enabled: menu.status.canToggle && !menu.viewModel.isBusy
        onTriggered: menu.viewModel.toggle(menu.status.path)
    }
    MenuItem {
        text: qsTr("Stop tracking")
        shortcutText: qsTr("Del")
        enabled: !menu.viewModel.isBusy
        onTriggered: menu.stopTracking()
    }
}
