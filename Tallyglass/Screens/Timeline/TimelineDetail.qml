import QtQuick
import Tallyglass.Controls
import Tallyglass.Timeline

// A text about the selected backup, and what a click does. Its height doesn't depend on the selection, so the items
// below don't move.
Item {
    id: detail
    required property timelineContent content

    implicitHeight: Math.max(texts.height, oneLine.height + oneCaption.height + texts.spacing)

    Label { id: oneLine; visible: false; text: " " }
    Caption { id: oneCaption; visible: false; text: " " }

    Column {
        id: texts
        width: detail.width
        spacing: Theme.unit / 4

        Flow {
            width: parent.width
            visible: detail.content.date !== ""
            spacing: Theme.unit
            Label {
                width: Math.min(implicitWidth, detail.width)
                text: detail.content.date
                font.weight: Font.DemiBold
            }
            Label {
                width: Math.min(implicitWidth, detail.width)
                visible: text !== ""
                text: detail.content.summary
            }
        }
        Flow {
            width: parent.width
            spacing: Theme.unit * 2
            Caption {
                width: Math.min(implicitWidth, detail.width)
                visible: text !== ""
                text: detail.content.detail
            }
            Caption {
                width: Math.min(implicitWidth, detail.width)
                text: detail.content.hint
                color: Theme.accent
            }
        }
    }
}
