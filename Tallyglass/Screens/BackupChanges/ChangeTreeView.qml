import QtQuick
import Tallyglass.BackupChanges
import Tallyglass.Context
import Tallyglass.Controls

// The tree of changes as an indented list. Right and Left open and close folders and go in and out of them; Return
// and the space bar open and close too.
FocusScope {
    id: tree
    required property ScreenContext context
    required property BackupChangesViewModel viewModel
    readonly property alias count: changes.count

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.cardBackground
        border.color: Theme.line
    }
    ItemList {
        id: changes
        anchors.fill: parent
        anchors.margins: 1
        topMargin: Theme.unit / 2
        bottomMargin: Theme.unit / 2
        focus: true
        rows: tree.viewModel.rows
        label: qsTr("Changed files")
        onCopyRequested: row => menu.copy(rows.keyAt(row))
        onContextMenuRequested: (row, x, y) => menu.openFor(rows.keyAt(row), changes, x, y)
        Keys.onRightPressed: select(tree.viewModel.stepIn(currentIndex))
        Keys.onLeftPressed: select(tree.viewModel.stepOut(currentIndex))
        Keys.onReturnPressed: tree.viewModel.toggle(currentIndex)
        Keys.onEnterPressed: tree.viewModel.toggle(currentIndex)
        Keys.onSpacePressed: tree.viewModel.toggle(currentIndex)

        delegate: ChangeTreeLine {
            list: changes
            onToggled: tree.viewModel.toggle(index)
        }
        footer: ListFooter { text: tree.viewModel.content.truncation }
    }
    ChangeMenu {
        id: menu
        context: tree.context
        olderRoot: tree.viewModel.content.olderRoot
        newerRoot: tree.viewModel.content.newerRoot
    }
}
