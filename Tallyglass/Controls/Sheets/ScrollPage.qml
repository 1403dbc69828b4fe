import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A page that scrolls when its content is higher, at any size of text. Its children are in a column; the item that gets
// the keyboard focus is brought into view.
Flickable {
    id: page
    property real margin: Theme.unit * 3
    property real maximumContentWidth: Theme.unit * 120
    property alias spacing: column.spacing
    default property alias items: column.data

    implicitHeight: column.height + margin * 2
    contentWidth: width
    contentHeight: column.height + margin * 2
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: true

    function scrollTo(position: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, position));
    }
    function bringIntoView(item: Item) {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor !== column)
                continue;
            const top = item.mapToItem(contentItem, 0, 0).y - Theme.unit * 2;
            const bottom = top + item.height + Theme.unit * 4;
            if (top < contentY)
                scrollTo(top);
            else if (bottom > contentY + height)
                scrollTo(Math.min(top, bottom - height));
            return;
        }
    }

    Window.onActiveFocusItemChanged: {
        if (Window.activeFocusItem)
            bringIntoView(Window.activeFocusItem);
    }
    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_PageDown: scrollTo(contentY + height * 0.9); break;
        case Qt.Key_PageUp: scrollTo(contentY - height * 0.9); break;
        default: return;
        }
        event.accepted = true;
    }

    T.ScrollBar.vertical: ScrollBar {}

    Column {
        id: column
        x: Math.max(page.margin, (page.width - width) / 2)
        y: page.margin
        width: Math.min(page.width - page.margin * 2, page.maximumContentWidth)
        spacing: Theme.unit * 2
    }
}
