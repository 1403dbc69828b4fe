import QtQuick
import Tallyglass.Controls

// One line that loses its middle when it is too long, and shows the whole under the pointer.
Label {
    id: label
    wrapMode: Text.NoWrap
    maximumLineCount: 1
    elide: Text.ElideMiddle

    HoverHandler { id: hover }
    Tip {
        shown: hover.hovered && label.truncated
        text: label.text
    }
}
