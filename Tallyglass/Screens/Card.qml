import QtQuick
import QtQuick.Layouts
import Tallyglass

// A titled container for one block of a screen. Its children stand in a column.
Rectangle {
    id: card
    property string title
    property string systemImage
    property color symbolColor: Theme.accent
    property real padding: Theme.unit * 2
    default property alias items: column.data

    Layout.fillWidth: true
    implicitWidth: column.implicitWidth + padding * 2
    implicitHeight: column.implicitHeight + padding * 2
    color: Theme.cardGround
    radius: Theme.radius
    border.color: Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: card.padding }
        spacing: Theme.unit * 1.5

        RowLayout {
            visible: card.title !== ""
            spacing: Theme.unit
            Symbol {
                name: card.systemImage
                color: card.symbolColor
            }
            Headline {
                Layout.fillWidth: true
                text: card.title
            }
        }
    }
}
