import QtQuick
import Tallyglass.BackupChanges
import Tallyglass.Context
import Tallyglass.Controls

// The totals, the filter and the list. The list fills the rest of the page; when that is too little, the page
// scrolls.
FocusScope {
    id: results
    required property ScreenContext context
    required property BackupChangesViewModel viewModel

    ScrollPage {
        id: page
        anchors.fill: parent
        maximumContentWidth: Infinity

        Column {
            id: head
            width: parent.width
            spacing: Theme.unit * 2

            Flow {
                id: tiles
                width: parent.width
                readonly property int count: results.viewModel.content.tiles.length
                readonly property int columns: width < count * Theme.bodySize * 9 ? Math.min(2, count) : count

                spacing: Theme.unit * 2
                Repeater {
                    model: results.viewModel.content.tiles
                    StatTile {
                        required property statTileContent modelData
                        width: Math.floor((tiles.width + tiles.spacing) / tiles.columns) - tiles.spacing
                        label: modelData.label
                        value: modelData.value
                        caption: modelData.caption
                        tint: Theme.textColors[modelData.role]
                    }
                }
            }
            Caption {
                width: parent.width
                visible: text !== ""
                text: results.viewModel.content.summaryNote
            }
            Flow {
                width: parent.width
                spacing: Theme.unit * 2
                SearchField {
                    id: filter
                    width: Math.min(implicitWidth, parent.width)
                    placeholderText: qsTr("Filter paths")
                    text: results.viewModel.searchText
                    onTextEdited: results.viewModel.searchText = text
                }
                Switch {
                    width: Math.min(implicitWidth, parent.width)
                    height: Math.max(filter.height, implicitHeight)
                    text: qsTr("Content changes only")
                    checked: results.viewModel.showContentChangesOnly
                    onToggled: results.viewModel.showContentChangesOnly = checked
                }
                Label {
                    height: filter.height
                    text: results.viewModel.content.shownCount
                    color: Theme.secondaryText
                    verticalAlignment: Text.AlignVCenter
                }
            }
            Divider { width: parent.width }
        }
        Item {
            readonly property real rest: page.height - page.margin * 2 - head.height - page.spacing

            width: parent.width
            height: Math.max(rest, Math.min(Theme.bodySize * 15, page.height * 0.9))

            ChangeTreeView {
                anchors.fill: parent
                visible: count > 0
                focus: true
                context: results.context
                viewModel: results.viewModel
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width
                visible: results.viewModel.content.message !== ""
                systemImage: results.viewModel.content.messageSymbol
                description: results.viewModel.content.message
            }
        }
    }
}
