import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// A modal card over the dimmed window. Its children are in a column that scrolls when the window is too low; `buttons`
// stay below them.
SheetFrame {
    id: sheet
    default property alias items: page.items
    property alias buttons: buttonRow.data

    contentItem: FocusScope {
        implicitHeight: page.implicitHeight + (footerArea.visible ? footerArea.implicitHeight : 0)
        ColumnLayout {
            anchors.fill: parent
            spacing: 0
            ScrollPage {
                id: page
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            ColumnLayout {
                id: footerArea
                visible: buttonRow.children.length > 0
                spacing: 0
                Divider { Layout.fillWidth: true }
                RowLayout {
                    id: buttonRow
                    Layout.fillWidth: true
                    Layout.margins: Theme.unit * 2
                    Layout.leftMargin: page.margin
                    Layout.rightMargin: page.margin
                    spacing: Theme.unit
                    layoutDirection: Qt.LeftToRight
                }
            }
        }
    }
}
