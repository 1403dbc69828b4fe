import QtQuick
import Tallyglass

// One line that loses its middle when it is too long, and shows the whole under the pointer.
TextLabel {
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
