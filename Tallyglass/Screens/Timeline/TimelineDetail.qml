import QtQuick
import Tallyglass.Controls
import Tallyglass.Timeline

// The selected backup in words, and what a click does. As high without a selection as with one, so that
// nothing below moves when one is made.
Item {
    id: detail
    required property timelineContent content

    implicitHeight: Math.max(words.height, oneLine.height + oneCaption.height + words.spacing)

    Label { id: oneLine; visible: false; text: " " }
    Caption { id: oneCaption; visible: false; text: " " }

    Column {
        id: words
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
