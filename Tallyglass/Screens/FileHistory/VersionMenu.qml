import QtQuick
import Tallyglass.Controls
import Tallyglass.FileHistory

// What can be done with a version of the traced item.
Menu {
    id: menu
    required property FileHistoryViewModel viewModel
    property int row: -1
    readonly property versionRowContent version: viewModel.versionAt(row)

    title: version.numberText

    /// Opens it for a row, at a point of `anchor`.
    function openFor(index: int, anchor: Item, x: real, y: real) {
        row = index;
        popup(anchor, x, y);
    }

    MenuItem {
        text: qsTr("Export…")
        enabled: !menu.viewModel.content.isExporting
        onTriggered: menu.viewModel.exportVersion(menu.row)
    }
    MenuItem {
        text: qsTr("Open a Read-Only Copy")
        shortcutText: qsTr("Return")
        enabled: menu.version.canOpen
        onTriggered: menu.viewModel.open(menu.row)
    }
    MenuItem {
        text: qsTr("Show in Backup")
        onTriggered: menu.viewModel.reveal(menu.row)
    }
    MenuItem {
        text: qsTr("Copy Path")
        shortcutText: "Ctrl+C"
        onTriggered: menu.viewModel.copyPath(menu.row)
    }
    MenuSeparator {}
    MenuItem {
        text: qsTr("Compare with the Version Before")
        enabled: menu.version.canCompare
        onTriggered: menu.viewModel.compareWithPrevious(menu.row)
    }
}
