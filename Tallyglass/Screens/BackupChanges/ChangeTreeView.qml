import QtQuick
import QtQuick.Templates as T
import Tallyglass.BackupChanges
import Tallyglass.Context
import Tallyglass.Controls

// The tree of changes as an indented list. Up, Down, Home, End and the page keys move; Right and Left open and close
// folders and go in and out of them; Return and the space bar open and close too. Ctrl+C copies the row's path, the
// menu key opens what else can be done with it.
FocusScope {
    id: tree
    required property ScreenContext context
    required property BackupChangesViewModel viewModel
    readonly property alias count: list.count

    function changeAt(row: int): var {
        const item = list.itemAtIndex(row);
        return item ? item.row.change : null;
    }
    function openMenu(item: Item, x: real, y: real) {
        menu.openFor(item.row.change.path, item, x, y);
    }
    function moveTo(row: int) {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, row));
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.cardBackground
        border.color: Theme.line
    }
    ListView {
        id: list
        readonly property int pageRows: currentItem ? Math.max(1, Math.floor(height / currentItem.height) - 1) : 1

        anchors.fill: parent
        anchors.margins: 1
        topMargin: Theme.unit / 2
        bottomMargin: Theme.unit / 2
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        highlightMoveDuration: 0
        model: tree.viewModel.rows
        T.ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Changed files")

        delegate: ChangeTreeLine {
            width: list.width
            onPicked: {
                tree.moveTo(index);
                list.forceActiveFocus(Qt.MouseFocusReason);
            }
            onToggled: tree.viewModel.toggle(index)
            onMenuRequested: (x, y) => tree.openMenu(this, x, y)
        }
        footer: Caption {
            width: list.width
            padding: Theme.unit * 2
            height: visible ? implicitHeight : 0
            visible: text !== ""
            text: tree.viewModel.content.truncation
            horizontalAlignment: Text.AlignHCenter
        }

        Keys.onPressed: event => {
            const row = currentIndex;
            if (event.matches(StandardKey.Copy)) {
                if (currentItem)
                    menu.copy(currentItem.row.change.path);
                event.accepted = true;
                return;
            }
            switch (event.key) {
            case Qt.Key_Up: tree.moveTo(row - 1); break;
            case Qt.Key_Down: tree.moveTo(row + 1); break;
            case Qt.Key_PageUp: tree.moveTo(row - pageRows); break;
            case Qt.Key_PageDown: tree.moveTo(row + pageRows); break;
            case Qt.Key_Home: tree.moveTo(0); break;
            case Qt.Key_End: tree.moveTo(count - 1); break;
            case Qt.Key_Right: tree.moveTo(tree.viewModel.stepIn(row)); break;
            case Qt.Key_Left: tree.moveTo(tree.viewModel.stepOut(row)); break;
            case Qt.Key_Return:
            case Qt.Key_Enter:
            case Qt.Key_Space: tree.viewModel.toggle(row); break;
            case Qt.Key_Menu:
                if (currentItem)
                    tree.openMenu(currentItem, Theme.unit * 4, currentItem.height);
                break;
            default: return;
            }
            event.accepted = true;
        }
    }
    ChangeMenu {
        id: menu
        workspace: tree.context.workspace
        clipboard: tree.context.clipboard
        olderRoot: tree.viewModel.content.olderRoot
        newerRoot: tree.viewModel.content.newerRoot
    }
}
