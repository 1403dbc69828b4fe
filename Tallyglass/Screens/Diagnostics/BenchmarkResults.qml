import QtQuick
import Tallyglass.Controls
import Tallyglass.Diagnostics

// The time of each measured condition, as a number and as a bar, and what can be said of them.
Column {
    id: results
    required property benchmarkContent content

    spacing: Theme.unit

    Repeater {
        model: results.content.rows
        Item {
            id: row
            required property benchmarkRowContent modelData
            readonly property bool fits: label.implicitWidth + numbers.implicitWidth + Theme.unit * 2 <= width

            width: results.width
            implicitHeight: details.y + details.height
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.label
            Accessible.description: modelData.accessibleValue

            Label {
                id: label
                width: Math.min(implicitWidth, row.width)
                text: row.modelData.label
                font.weight: row.modelData.isNamed ? Font.DemiBold : Font.Normal
                Accessible.ignored: true
            }
            Caption {
                id: numbers
                x: row.fits ? row.width - width : 0
                y: row.fits ? label.baselineOffset - baselineOffset : label.height
                width: Math.min(implicitWidth, row.width)
                text: row.modelData.time === "" ? row.modelData.pairs
                                                : row.modelData.time + " · " + row.modelData.pairs
                Accessible.ignored: true
            }
            Column {
                id: details
                y: (row.fits ? label.height : numbers.y + numbers.height) + Theme.unit / 2
                width: row.width
                spacing: Theme.unit / 2

                Rectangle {
                    width: parent.width
                    height: Theme.unit
                    visible: row.modelData.fraction > 0
                    radius: height / 2
                    color: Theme.track
                    Rectangle {
                        width: Math.max(parent.height, row.modelData.fraction * parent.width)
                        height: parent.height
                        radius: height / 2
                        color: row.modelData.isNamed ? Theme.healthy : Theme.accent
                    }
                }
                Note {
                    width: parent.width
                    visible: text !== ""
                    text: row.modelData.note
                    systemImage: "exclamationmark.triangle.fill"
                    symbolColor: Theme.warning
                }
            }
        }
    }
    Label {
        width: parent.width
        topPadding: Theme.unit / 2
        visible: text !== ""
        text: results.content.conclusion
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: results.content.savedNote
    }
}
