import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.Dashboard

// A reason for the health: a heading with a symbol, an explanation and a list.
Column {
    id: section
    required property string heading
    required property string systemImage
    required property color symbolColor
    property string caption
    property var rows: []
    property string more

    spacing: Theme.unit

    Divider { width: parent.width }
    RowLayout {
        width: parent.width
        spacing: Theme.unit
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: section.systemImage
            color: section.symbolColor
        }
        Label {
            Layout.fillWidth: true
            text: section.heading
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: section.caption
    }
    Column {
        id: lines
        width: parent.width
        visible: list.rows.length > 0
        spacing: Theme.unit / 2
        Repeater {
            model: RowListModel {
                id: list
                rows: section.rows
            }
            Item {
                id: line
                required property healthRow row
                readonly property real captionX: rowText.x + rowText.width + Theme.unit
                readonly property bool fits: captionX + beside.implicitWidth <= width

                width: lines.width
                implicitHeight: Math.max(rowText.height, caption.y + caption.implicitHeight)
                Rectangle {
                    x: Theme.unit / 2
                    y: (rowText.implicitHeight - height) / 2
                    width: Theme.unit * 0.75
                    height: width
                    radius: width / 2
                    color: section.symbolColor
                    Accessible.ignored: true
                }
                Label {
                    id: rowText
                    x: Theme.unit * 2
                    width: Math.min(implicitWidth, line.width - x)
                    text: line.row.text
                }
                Caption {
                    id: beside // measures whether the caption fits beside the text
                    visible: false
                    text: line.row.caption
                    wrapMode: Text.NoWrap
                }
                Caption {
                    id: caption
                    x: line.fits ? line.captionX : rowText.x
                    y: line.fits ? rowText.baselineOffset - baselineOffset : rowText.height
                    width: line.fits ? beside.implicitWidth : line.width - x
                    text: line.row.caption
                }
            }
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: section.more
    }
}
