import QtQuick
import Tallyglass.Controls
import Tallyglass.Timeline

// The meaning of the colours and marks of the chart.
Flow {
    id: legend
    required property var items

    spacing: Theme.unit * 1.5

    Repeater {
        model: legend.items
        Row {
            id: entry
            required property timelineLegendItem modelData
            readonly property color itemColor: Theme.colors[modelData.role]
            readonly property bool isBar: modelData.symbol === "" && !modelData.isRule

            spacing: Theme.unit * 0.75
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.accessibleName
            Accessible.description: modelData.text === modelData.accessibleName ? "" : modelData.text

            Rectangle {
                visible: entry.isBar
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.captionSize * 0.7
                height: width
                radius: 2
                color: entry.itemColor
            }
            Row {
                visible: entry.modelData.isRule
                anchors.verticalCenter: parent.verticalCenter
                spacing: 3
                Repeater {
                    model: 3
                    Rectangle { width: 4; height: 1; color: entry.itemColor }
                }
            }
            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: entry.modelData.symbol
                color: entry.itemColor
                size: Theme.captionSize * 1.15
            }
            Caption {
                text: entry.modelData.text
                Accessible.ignored: true
            }
        }
    }
}
