import QtQuick
import Tallyglass.Controls
import Tallyglass.Exclusions

// Adds items, and lists those that are watched. The list is as high as its rows, but no higher than lets the whole card
// be in view, or at least the whole list.
Card {
    id: card
    required property ExclusionsViewModel viewModel
    required property real pageHeight // of what is in view at once

    Accessible.name: qsTr("Managed items")

    Flow {
        width: parent.width
        spacing: Theme.unit

        Button {
            id: addItems
            highlighted: true
            text: qsTr("Add Items")
            systemImage: "plus"
            onClicked: card.viewModel.addItems()
        }
        Button {
            text: qsTr("Add Folder…")
            systemImage: "folder"
            onClicked: card.viewModel.addFolder()
        }
        Item {
            width: spinner.width
            height: addItems.height
            BusyIndicator {
                id: spinner
                anchors.verticalCenter: parent.verticalCenter
                running: card.viewModel.isBusy
                visible: running
                label: qsTr("Updating exclusions")
            }
        }
    }
    ErrorBanner {
        width: parent.width
        visible: text !== ""
        text: card.viewModel.error
    }
    Caption {
        width: parent.width
        text: qsTr("Items you've added here. macOS offers no way to list every excluded item on a disk, so this is a "
                   + "working list rather than a complete inventory.")
    }
    Label {
        width: parent.width
        visible: card.viewModel.isEmpty
        padding: Theme.unit * 2
        text: qsTr("Nothing tracked yet. Use Add Items to choose files or folders.")
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
    Item {
        readonly property real largestHeight: card.pageHeight - y - card.padding * 2

        width: parent.width
        height: Math.min(items.contentHeight, Math.max(card.pageHeight * 0.8, largestHeight))
        visible: items.count > 0

        ItemList {
            id: items
            x: 1 - card.padding
            width: card.width - 2
            height: parent.height
            rows: card.viewModel.rows
            label: card.Accessible.name
            onCopyRequested: row => card.viewModel.copy(rows.keyAt(row))
            onContextMenuRequested: (row, x, y) => menu.openFor(rows.keyAt(row), items, x, y)
            Keys.onSpacePressed: card.viewModel.toggle(rows.keyAt(currentIndex))
            Keys.onDeletePressed: card.stopTracking(currentIndex)

            delegate: ExclusionRow {
                list: items
                busy: card.viewModel.isBusy
                leftPadding: card.padding - 1
                rightPadding: card.padding - 1 - Theme.unit / 2
                onToggle: excluded => card.viewModel.setExcluded(excluded, status.path)
                onStopTracking: card.stopTracking(index)
            }
        }
    }
    ExclusionMenu {
        id: menu
        viewModel: card.viewModel
        onStopTracking: card.stopTracking(items.currentIndex)
    }

    /// The current row becomes the next one, or else the one before.
    function stopTracking(row: int) {
        if (row < 0 || viewModel.isBusy)
            return;
        const path = items.rows.keyAt(row);
        if (row === items.currentIndex)
            items.select(row + 1 < items.count ? row + 1 : row - 1);
        viewModel.stopTracking(path);
    }

    Connections {
        target: card.viewModel.rows
        property bool hadFocus: false

        function onAboutToReplaceRows() { hadFocus = items.activeFocus; }
        function onRowsReplaced() {
            if (hadFocus && items.count === 0)
                addItems.forceActiveFocus(Qt.OtherFocusReason); // the list is gone
        }
    }
}
