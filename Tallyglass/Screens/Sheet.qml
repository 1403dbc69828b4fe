import QtQuick
import QtQuick.Layouts
import Tallyglass

// A modal card over the dimmed window. Children stand in a column that scrolls when the window is too low; `footer`
// stays below them.
SheetFrame {
    id: sheet
    default property alias items: page.items
    property alias footer: buttons.data

    contentItem: FocusScope {
        implicitHeight: page.implicitHeight + (footerArea.visible ? footerArea.implicitHeight : 0)
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

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
                visible: buttons.children.length > 0
                spacing: 0
                Divider { Layout.fillWidth: true }
                RowLayout {
                    id: buttons
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
