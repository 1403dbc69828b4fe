import QtQuick
import QtQuick.Layouts
import Tallyglass

// A titled container for one block of a screen. Its children stand in a stack.
Rectangle {
    id: card
    property string title
    property string systemImage
    property color symbolColor: Theme.accent
    property real padding: Theme.unit * 2
    default property alias items: stack.data

    Layout.fillWidth: true
    implicitWidth: stack.implicitWidth + padding * 2
    implicitHeight: stack.height + padding * 2
    color: Theme.cardGround
    radius: Theme.radius
    border.color: Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Stack {
        id: stack
        x: card.padding
        y: card.padding
        width: card.width - card.padding * 2
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
