import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls

// What changed, row by row, with its filter. The list is as high as all of its rows on the page that scrolls,
// while only those in sight exist; the filter stays in sight above them. Whatever the filter does, the selected
// row or else the topmost one stays where it is on the screen.
Card {
    id: card
    required property ScreenContext context
    required property CompareViewModel viewModel
    required property ScrollPage page
    readonly property compareResultsContent content: viewModel.results
    readonly property ChangeListModel rows: viewModel.rows

    readonly property real rowHeight: Theme.rowHeight
    // Where the filter and the list begin on the page.
    readonly property real filterTop: page.margin + y + padding + filter.y - Theme.unit
    readonly property real listTop: page.margin + y + padding + list.y
    // In a low window large text would leave no room for rows below the filter.
    readonly property bool sticks: bar.height < page.height * 0.35
    readonly property real coveredHeight: sticks ? bar.height : 0

    // The row that keeps its place while rows come and go, and where it is in the window; -1 for none.
    property int anchorRow: -1
    property real anchorY: 0

    function placeInWindow(row: int): real {
        return listTop + row * rowHeight - page.contentY;
    }
    function isInSight(row: int): bool {
        const top = placeInWindow(row);
        return top + rowHeight > coveredHeight && top < page.height;
    }
    function rowInSight(): int { // the topmost
        return Math.max(0, Math.ceil((page.contentY + coveredHeight - listTop) / rowHeight));
    }
    function bringRowIntoSight(row: int) {
        const top = placeInWindow(row);
        if (top < coveredHeight)
            page.scrollTo(page.contentY + top - coveredHeight);
        else if (top + rowHeight > page.height - Theme.unit)
            page.scrollTo(page.contentY + top + rowHeight - page.height + Theme.unit);
    }
    function select(row: int) {
        rows.selectedRow = Math.max(0, Math.min(rows.count - 1, row));
        bringRowIntoSight(rows.selectedRow);
    }
    function move(by: int) {
        select(rows.selectedRow < 0 ? rowInSight() : rows.selectedRow + by);
    }

    title: qsTr("Changes")
    systemImage: "list.bullet.indent"

    Connections {
        target: card.rows
        function onAboutToReplace() {
            const selected = card.rows.selectedRow;
            if (selected >= 0 && card.isInSight(selected))
                card.anchorRow = selected;
            else
                card.anchorRow = card.placeInWindow(0) < card.coveredHeight ? card.rowInSight() : -1;
            card.anchorY = card.placeInWindow(card.anchorRow);
        }
        function onReplaced() {
            if (card.anchorRow < 0 || card.anchorRow >= card.rows.formerCount)
                return;
            const place = card.listTop + card.rows.newPlaceOf(card.anchorRow) * card.rowHeight;
            card.page.contentY = Math.max(0, place - card.anchorY); // the page keeps it within its new height
        }
    }

    Item {
        id: filter
        width: parent.width
        z: 1
        implicitHeight: controls.height

        Rectangle {
            id: bar
            readonly property real lowest: card.height - card.padding - filter.y - controls.height
            readonly property real shift: card.sticks ? Math.max(0, Math.min(card.page.contentY - card.filterTop, lowest)) : 0

            x: 1 - card.padding
            y: shift - Theme.unit
            width: card.width - 2
            height: controls.height + Theme.unit * 2
            color: card.color

            CompareFilter {
                id: controls
                x: card.padding - 1
                y: Theme.unit
                width: filter.width
                viewModel: card.viewModel
            }
            Divider {
                width: parent.width
                anchors.bottom: parent.bottom
                visible: bar.shift > 0
            }
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: card.content.metadataNote
    }
    Label {
        width: parent.width
        visible: text !== ""
        topPadding: Theme.unit * 2
        bottomPadding: Theme.unit * 2
        text: card.content.emptyNote
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
    Item {
        id: list
        width: parent.width
        visible: card.rows.count > 0
        implicitHeight: card.rows.count * card.rowHeight

        ListView {
            id: lines
            // A window onto the rows that moves along with the page.
            y: Math.max(0, Math.min(card.page.contentY - card.listTop, list.height - height))
            width: list.width
            height: Math.min(card.page.height, list.height)
            onYChanged: follow()
            onHeightChanged: follow()
            onOriginYChanged: follow()
            interactive: false
            model: card.rows
            reuseItems: true
            cacheBuffer: 0
            activeFocusOnTab: true
            readonly property bool keepsItselfInSight: true
            property bool byPointer: false
            Accessible.role: Accessible.List
            Accessible.name: card.title

            onActiveFocusChanged: {
                if (!activeFocus)
                    byPointer = false;
                else if (card.rows.selectedRow < 0)
                    card.select(card.rowInSight());
                else if (!byPointer)
                    card.bringRowIntoSight(card.rows.selectedRow);
            }
            Keys.onPressed: event => {
                const page = Math.max(1, Math.floor((card.page.height - card.coveredHeight) / card.rowHeight) - 1);
                byPointer = false;
                switch (event.key) {
                case Qt.Key_Down: card.move(1); break;
                case Qt.Key_Up: card.move(-1); break;
                case Qt.Key_PageDown: card.move(page); break;
                case Qt.Key_PageUp: card.move(-page); break;
                case Qt.Key_Home: card.select(0); break;
                case Qt.Key_End: card.select(card.rows.count - 1); break;
                case Qt.Key_Menu: openMenu(); break;
                case Qt.Key_F10:
                    if (!(event.modifiers & Qt.ShiftModifier))
                        return;
                    openMenu();
                    break;
                default:
                    if (!event.matches(StandardKey.Copy))
                        return;
                    menu.copy(card.rows.pathAt(card.rows.selectedRow));
                }
                event.accepted = true;
            }

            function follow() { // the rows keep their places on the page
                contentY = originY + y;
            }
            function openMenu() {
                const row = card.rows.selectedRow;
                if (row < 0)
                    return;
                card.bringRowIntoSight(row);
                menu.openFor(card.rows.pathAt(row), list, Theme.unit * 4, (row + 1) * card.rowHeight);
            }

            delegate: Item {
                id: line
                required property changeRowContent content
                required property int index
                readonly property bool current: index === card.rows.selectedRow
                readonly property bool truncated: row.truncated

                width: lines.width
                height: card.rowHeight
                ListView.onPooled: visible = false // else a screen reader would still find it
                ListView.onReused: visible = true

                Rectangle {
                    x: -Theme.unit
                    width: parent.width + Theme.unit * 2
                    height: parent.height
                    radius: Theme.controlRadius
                    color: line.current ? Theme.selectedBackground : pointer.row === line.index ? Theme.hoverBackground : "transparent"
                    FocusRing {
                        anchors.margins: 0
                        radius: Theme.controlRadius
                        visible: line.current && lines.activeFocus && !lines.byPointer
                    }
                }
                ChangeRow {
                    id: row
                    anchors.fill: parent
                    content: line.content
                    Accessible.selectable: true
                    Accessible.selected: line.current
                    Accessible.focused: line.current && lines.activeFocus
                    Accessible.onPressAction: card.select(line.index)
                }
            }
        }
        MouseArea {
            id: pointer
            readonly property int row: containsMouse ? Math.floor(mouseY / card.rowHeight) : -1

            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            hoverEnabled: true
            onPressed: mouse => {
                const row = Math.floor(mouse.y / card.rowHeight);
                lines.byPointer = true;
                card.rows.selectedRow = row;
                lines.forceActiveFocus(Qt.MouseFocusReason);
                if (mouse.button === Qt.RightButton)
                    menu.openFor(card.rows.pathAt(row), list, mouse.x, mouse.y);
            }
            Item {
                y: pointer.row * card.rowHeight
                width: parent.width
                height: card.rowHeight
                LazyToolTip {
                    active: lines.itemAtIndex(pointer.row)?.truncated ?? false
                    text: active ? card.rows.pathAt(pointer.row) : ""
                }
            }
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        topPadding: Theme.unit
        text: card.content.limitNote
    }
    ChangeMenu {
        id: menu
        workspace: card.context.workspace
        clipboard: card.context.clipboard
        olderRoot: card.viewModel.olderRoot
        newerRoot: card.viewModel.newerRoot
    }
}
