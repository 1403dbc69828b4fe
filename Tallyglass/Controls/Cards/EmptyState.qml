import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// What a screen or card shows when it has nothing to show, and what to do next, or while it waits. Buttons go below the
// text.
Item {
    id: empty
    property string title
    property string systemImage
    property string description
    property bool busy: false ///< a spinner takes the place of the image
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
            visible: empty.busy
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
