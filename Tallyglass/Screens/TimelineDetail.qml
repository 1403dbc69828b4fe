import QtQuick
import QtQuick.Layouts
import Tallyglass

// The selected backup in words, and what a click does. As high without a selection as with one, so that
// nothing below moves when one is made.
Item {
    id: detail
    required property timelineContent content

    Layout.fillWidth: true
    implicitHeight: Math.max(column.implicitHeight, spacer.implicitHeight)

    // Two lines in the styles below, to measure.
    ColumnLayout {
        id: spacer
        visible: false
        spacing: Theme.unit / 4
        TextLabel { text: " " }
        Caption { text: " " }
    }

    ColumnLayout {
        id: column
        width: parent.width
        spacing: Theme.unit / 4

        Flow {
            Layout.fillWidth: true
            visible: detail.content.date !== ""
            spacing: Theme.unit
            TextLabel {
                text: detail.content.date
                font.weight: Font.DemiBold
            }
            TextLabel {
                width: Math.min(implicitWidth, parent.width)
                visible: text !== ""
                text: detail.content.summary
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: Theme.unit * 2
            Caption {
                width: Math.min(implicitWidth, parent.width)
                visible: text !== ""
                text: detail.content.detail
            }
            Caption {
                width: Math.min(implicitWidth, parent.width)
                text: detail.content.hint
                color: Theme.accent
            }
        }
    }
}
