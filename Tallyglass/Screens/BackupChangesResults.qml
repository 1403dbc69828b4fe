import QtQuick
import Tallyglass

// The totals, what is to be listed, and the list. The list fills what is left of the page; when that is little,
// the page scrolls.
FocusScope {
    id: results
    required property BackupChangesState changes
    required property Pasteboard pasteboard

    ScrollPage {
        id: page
        anchors.fill: parent
        maximumContentWidth: Number.POSITIVE_INFINITY

        Column {
            id: head
            width: parent.width
            spacing: Theme.unit * 2

            Flow {
                id: tiles
                width: parent.width
                readonly property int count: results.changes.content.tiles.length
                readonly property int columns: width < count * Theme.bodySize * 9 ? Math.min(2, count) : count

                spacing: Theme.unit * 2
                Repeater {
                    model: results.changes.content.tiles
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
                text: results.changes.content.summaryNote
            }
            Flow {
                width: parent.width
                spacing: Theme.unit * 2
                FilterField {
                    id: filter
                    width: Math.min(implicitWidth, parent.width)
                    placeholderText: qsTr("Filter paths")
                    text: results.changes.searchText
                    onTextEdited: results.changes.searchText = text
                }
                LabelledSwitch {
                    width: Math.min(implicitWidth, parent.width)
                    height: Math.max(filter.height, implicitHeight)
                    text: qsTr("Content changes only")
                    checked: results.changes.showContentChangesOnly
                    onToggled: results.changes.showContentChangesOnly = checked
                }
                TextLabel {
                    height: filter.height
                    text: results.changes.content.shownCount
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
                changes: results.changes
                pasteboard: results.pasteboard
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width
                visible: results.changes.content.message !== ""
                systemImage: results.changes.content.messageSymbol
                description: results.changes.content.message
            }
        }
    }
}
