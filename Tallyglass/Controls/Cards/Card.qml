import QtQuick
import Tallyglass.Controls

// A titled container for one block of a screen, with its children in a column.
Rectangle {
    id: card
    property string title
    property string systemImage
    property color symbolColor: Theme.accent
    property real padding: Theme.unit * 2
    default property alias items: column.data

    implicitHeight: column.height + padding * 2
    color: Theme.cardBackground
    radius: Theme.radius
    border.color: Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: column
        x: card.padding
        y: card.padding
        width: card.width - card.padding * 2
        spacing: Theme.unit * 1.5

        Loader {
            width: parent.width
            active: card.title !== ""
            visible: active
            sourceComponent: Item {
                implicitHeight: Math.max(symbol.height, heading.height)
                Symbol {
                    id: symbol
                    anchors.verticalCenter: parent.verticalCenter
                    name: card.systemImage
                    color: card.symbolColor
                }
                Headline {
                    id: heading
                    anchors.verticalCenter: parent.verticalCenter
                    x: symbol.visible ? symbol.width + Theme.unit : 0
                    width: parent.width - x
                    text: card.title
                }
            }
        }
    }
}
