import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A list whose rows can be walked, selected, copied from and acted upon. One stop for Tab; Up, Down, Home, End and
// the page keys move the current row, Ctrl+C copies it, the menu key and Shift+F10 open its context menu. The
// delegate is an ItemRow. When rows come and go, the current row stays at its position on the screen if it is in
// view, or else the topmost row does.
ListView {
    id: list
    required property DiffedListModel rows
    required property string label
    signal copyRequested(int row)
    signal contextMenuRequested(int row, real x, real y) // in coordinates of the list

    property bool focusedByPointer: false

    /// Makes a row the current one, and brings it into view.
    function select(row: int) {
        const target = Math.max(0, Math.min(count - 1, row));
        positionViewAtIndex(target, ListView.Contain); // before the focus moves there, so that a page follows
        rows.currentRow = target;
    }
    function selectByPointer(row: int) {
        focusedByPointer = true;
        select(row);
        forceActiveFocus(Qt.MouseFocusReason);
    }
    function moveBy(by: int) {
        select(currentIndex < 0 ? topmostRow() : currentIndex + by);
    }
    function topmostRow(): int {
        return Math.max(0, indexAt(0, contentY));
    }
    function isInView(row: int): bool {
        const last = indexAt(0, contentY + height - 1); // none below the last row
        return row >= topmostRow() && (last < 0 || row <= last);
    }
    /// Scrolls until the top of a row is at `y` in the list, as far as the list reaches.
    function positionRow(row: int, y: real) {
        positionViewAtIndex(row, ListView.Contain);
        const rowY = itemAtIndex(row)?.y ?? contentY + y;
        const end = originY + contentHeight + bottomMargin - height;
        contentY = Math.max(originY - topMargin, Math.min(end, rowY - y));
    }
    function selectIfNone() {
        if (activeFocus && currentIndex < 0 && count > 0)
            select(topmostRow());
    }
    function requestContextMenu() {
        if (!currentItem)
            return;
        positionViewAtIndex(currentIndex, ListView.Contain);
        contextMenuRequested(currentIndex, Theme.unit * 4, currentItem.y + currentItem.height - contentY);
    }

    model: rows
    currentIndex: -1
    activeFocusOnTab: true
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    cacheBuffer: 0
    clip: true
    T.ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: label

    Component.onCompleted: {
        currentIndex = rows.currentRow;
        selectIfNone(); // it can have the focus already
    }
    onActiveFocusChanged: {
        if (!activeFocus)
            focusedByPointer = false;
        selectIfNone();
    }
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(height / (currentItem?.height ?? height)) - 1);
        focusedByPointer = false;
        switch (event.key) {
        case Qt.Key_Up: moveBy(-1); break;
        case Qt.Key_Down: moveBy(1); break;
        case Qt.Key_PageUp: moveBy(-page); break;
        case Qt.Key_PageDown: moveBy(page); break;
        case Qt.Key_Home: select(0); break;
        case Qt.Key_End: select(count - 1); break;
        case Qt.Key_Menu: requestContextMenu(); break;
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier))
                return;
            requestContextMenu();
            break;
        default:
            if (!event.matches(StandardKey.Copy))
                return;
            if (currentIndex >= 0)
                copyRequested(currentIndex);
        }
        event.accepted = true;
    }

    Connections {
        target: list.rows
        property int anchorRow: -1 // that keeps its position
        property real anchorY: 0

        function onCurrentRowChanged() {
            list.forceLayout(); // the view has to know the rows that the index counts
            list.currentIndex = list.rows.currentRow;
        }
        function onAboutToReplaceRows() {
            anchorRow = list.isInView(list.currentIndex) ? list.currentIndex
                      : list.atYBeginning ? -1 : list.topmostRow();
            anchorY = (list.itemAtIndex(anchorRow)?.y ?? 0) - list.contentY;
        }
        function onRowsReplaced() {
            list.forceLayout();
            list.currentIndex = list.rows.currentRow;
            if (anchorRow >= 0)
                list.positionRow(list.rows.rowAfterReplacement(anchorRow), anchorY);
            list.selectIfNone();
        }
    }
}
