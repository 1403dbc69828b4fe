import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.FileHistory

// The distinct versions: how many, in which backups, and one row for each. The list is as high as its rows, but no
// higher than the page.
Card {
    id: card
    required property FileHistoryViewModel viewModel
    required property ScrollPage page
    readonly property fileHistoryContent content: viewModel.content

    title: qsTr("Versions")
    systemImage: "square.stack.3d.up"

    StatTiles {
        width: parent.width
        columns: width < Theme.unit * 36 * Theme.textScale ? 1 : 3
        contents: card.content.tiles
    }
    Column {
        width: parent.width
        spacing: Theme.unit / 2

        PresenceStrip {
            id: strip
            width: parent.width
            height: Theme.unit * 2 + Theme.bodySize
            viewModel: card.viewModel
            Accessible.role: Accessible.Slider
            Accessible.name: qsTr("Presence in backups")
            Accessible.description: strip.selectedText
            Accessible.focusable: true
            Accessible.onIncreaseAction: strip.moveBy(1)
            Accessible.onDecreaseAction: strip.moveBy(-1)
            FocusRing { visible: strip.visualFocus }
        }
        Row {
            width: parent.width
            spacing: Theme.unit
            Caption {
                width: (parent.width - parent.spacing) / 2
                text: card.content.firstBackup
                Accessible.ignored: true
            }
            Caption {
                width: (parent.width - parent.spacing) / 2
                text: card.content.lastBackup
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }
        }
        Caption {
            width: parent.width
            text: strip.caption !== "" ? strip.caption
                : qsTr("One mark for each backup, hollow where the item is missing. Choose one to see its version.")
        }
    }
    Caption {
        width: parent.width
        text: qsTr("Time Machine carries unchanged files forward without copying them, so consecutive backups holding "
                   + "the same version are grouped together.")
    }
    RowLayout {
        width: parent.width
        visible: card.content.isExporting
        spacing: Theme.unit
        BusyIndicator {}
        Column {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Label {
                width: parent.width
                text: card.content.exportText
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
            }
            ProgressBar {
                width: parent.width
                visible: card.content.exportFraction >= 0
                value: card.content.exportFraction
                Accessible.name: card.content.exportText
            }
        }
        Button {
            text: qsTr("Cancel")
            onClicked: card.viewModel.cancelExport()
        }
    }
    ItemList {
        id: versions
        x: 1 - card.padding
        width: card.width - 2
        height: Math.min(count * Theme.rowHeight, Math.max(Theme.rowHeight * 3, card.page.height * 0.6))
        rows: card.viewModel.rows
        label: card.title
        onCopyRequested: row => card.viewModel.copyPath(row)
        onContextMenuRequested: (row, x, y) => menu.openFor(row, versions, x, y)
        Keys.onReturnPressed: card.viewModel.open(currentIndex)
        Keys.onEnterPressed: card.viewModel.open(currentIndex)

        delegate: VersionRow {
            list: versions
            leftPadding: card.padding - 1
            rightPadding: card.padding - 1
            inset: Theme.unit - 1
            canExport: !card.content.isExporting
            onExportRequested: card.viewModel.exportVersion(index)
            onDoubleClicked: card.viewModel.open(index)
        }
    }
    Connections {
        target: card.viewModel
        function onRowRequested(row) {
            versions.select(row);
            card.page.bringIntoView(versions);
        }
    }
    VersionMenu {
        id: menu
        viewModel: card.viewModel
    }
}
