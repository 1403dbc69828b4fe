import QtQuick
import Tallyglass.Context
import Tallyglass.Controls

// What can be done with a changed path: copy it, trace it through all backups, or see its item in one of the two
// backups where it is there.
Menu {
    id: menu
    required property ScreenContext context
    property string olderRoot
    property string newerRoot
    property string path

    title: path

    /// Opens it for a path, at a point of `anchor`.
    function openFor(changedPath: string, anchor: Item, x: real, y: real) {
        path = changedPath;
        item.look(path, olderRoot, newerRoot);
        popup(anchor, x, y);
    }
    function copy(changedPath: string) {
        context.clipboard.setText(changedPath);
    }

    MenuItem {
        text: qsTr("Copy Path")
        shortcutText: "Ctrl+C"
        onTriggered: menu.copy(menu.path)
    }
    MenuItem {
        text: qsTr("Trace This File")
        onTriggered: menu.context.traceFile(menu.path)
    }
    MenuSeparator {}
    MenuItem {
        text: qsTr("Show in Older Backup")
        enabled: item.isInOlder
        onTriggered: item.showInOlder()
    }
    MenuItem {
        text: qsTr("Show in Newer Backup")
        enabled: item.isInNewer
        onTriggered: item.showInNewer()
    }

    readonly property ItemInBackups places: ItemInBackups {
        id: item
        workspace: menu.context.workspace
    }
}
