import QtQuick
import Tallyglass.Controls

// One line of text, elided in the middle when too long; then a tool tip has the whole.
Label {
    id: label
    wrapMode: Text.NoWrap
    maximumLineCount: 1
    elide: Text.ElideMiddle

    HoverHandler { id: hover }
    LazyToolTip {
        active: hover.hovered && label.truncated
        text: label.text
    }
}
