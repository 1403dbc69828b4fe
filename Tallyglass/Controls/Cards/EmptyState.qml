import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// What a screen or card shows without content or while it waits, and what to do next. Its children are buttons below
// the text.
Item {
    id: empty
    property string title
    property string systemImage
    property string description
    property bool busy: false ///< shows a busy indicator instead of the image
    default property alias actions: row.data

    Layout.fillWidth: true
    implicitWidth: column.implicitWidth
    implicitHeight: column.implicitHeight + Theme.unit * 6

    ColumnLayout {
        id: column
        anchors.centerIn: parent
        width: Math.min(parent.width - Theme.unit * 4, Theme.unit * 52)
        spacing: Theme.unit

        BusyIndicator {
            Layout.alignment: Qt.AlignHCenter
            running: empty.busy
            visible: running
            size: Theme.displaySize * 1.5
            color: Theme.accent
        }
        Symbol {
            Layout.alignment: Qt.AlignHCenter
            visible: !empty.busy
            name: empty.systemImage
            color: Theme.secondaryText
            size: Theme.displaySize * 1.7
        }
        Headline {
            Layout.fillWidth: true
            visible: text !== ""
            text: empty.title
            horizontalAlignment: Text.AlignHCenter
        }
        Label {
            Layout.fillWidth: true
            visible: text !== ""
            text: empty.description
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
        }
        Flow {
            id: row
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: Theme.unit
            visible: children.length > 0
            spacing: Theme.unit
        }
    }
}
