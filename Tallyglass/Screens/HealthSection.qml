import QtQuick
import QtQuick.Layouts
import Tallyglass

// A reason behind the verdict: a heading with its symbol, a line of explanation and a list.
ColumnLayout {
    id: section
    required property string heading
    required property string systemImage
    required property color symbolColor
    property string caption
    property var rows: []
    property string more

    Layout.fillWidth: true
    spacing: Theme.unit

    Divider { Layout.bottomMargin: Theme.unit / 2 }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.unit
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: section.systemImage
            color: section.symbolColor
        }
        TextLabel {
            Layout.fillWidth: true
            text: section.heading
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
    }
    Caption {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.caption
    }
    Column {
        Layout.fillWidth: true
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
                width: parent?.width ?? 0
                height: flow.implicitHeight
                Rectangle {
                    x: Theme.unit / 2
                    y: (words.implicitHeight - height) / 2
                    width: Theme.unit * 0.75
                    height: width
                    radius: width / 2
                    color: section.symbolColor
                    Accessible.ignored: true
                }
                Flow {
                    id: flow
                    anchors { left: parent.left; right: parent.right; leftMargin: Theme.unit * 2 }
                    spacing: Theme.unit
                    TextLabel {
                        id: words
                        text: line.row.text
                    }
                    Caption {
                        width: Math.min(implicitWidth, flow.width)
                        height: flow.width < implicitWidth ? implicitHeight : words.implicitHeight
                        verticalAlignment: Text.AlignVCenter
                        text: line.row.caption
                    }
                }
            }
        }
    }
    Caption {
        visible: text !== ""
        text: section.more
    }
}
