import QtQuick
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls

// What changed, row by row, below its filter. The list is as high as all changes, but no higher than lets the whole
// card be in view; its height doesn't depend on the filter, so that nothing moves while one is typed.
Card {
    id: card
    required property ScreenContext context
    required property CompareViewModel viewModel
    required property real pageHeight // of what is in view at once
    readonly property compareResultsContent content: viewModel.results

    title: qsTr("Changes")
    systemImage: "list.bullet.indent"

    CompareFilter {
        width: parent.width
        viewModel: card.viewModel
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: card.content.metadataNote
    }
    Item {
        id: area
        readonly property int fittingRows: Math.floor((card.pageHeight - y - card.padding * 2) / Theme.rowHeight)

        width: parent.width
        height: Math.min(card.content.unfilteredCount, Math.max(4, fittingRows)) * Theme.rowHeight

        ItemList {
            id: changes
            x: 1 - card.padding
            width: card.width - 2
            height: parent.height
            visible: count > 0
            rows: card.viewModel.rows
            label: card.title
            onCopyRequested: row => menu.copy(rows.keyAt(row))
            onContextMenuRequested: (row, x, y) => menu.openFor(rows.keyAt(row), changes, x, y)

            delegate: ChangeRow {
                list: changes
                leftPadding: card.padding - 1
                rightPadding: card.padding - 1
                inset: Theme.unit - 1
            }
            footer: ListFooter { text: card.content.limitNote }
        }
        Label {
            width: parent.width
            visible: text !== ""
            topPadding: Theme.unit * 2
            text: card.content.emptyNote
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
        }
    }
    ChangeMenu {
        id: menu
        context: card.context
        olderRoot: card.viewModel.olderRoot
        newerRoot: card.viewModel.newerRoot
    }
}
