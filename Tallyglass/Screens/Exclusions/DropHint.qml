import QtQuick
import Tallyglass.Controls

// Says, over the screen, what dropping the dragged items will do.
Rectangle {
    id: hint
    radius: Theme.radius
    color: Theme.scrim
    border { width: 2; color: Theme.accent }
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text.text

    Rectangle {
        anchors.centerIn: parent
        width: text.x + text.width + Theme.unit * 2
        height: text.height + Theme.unit * 3
        radius: Theme.radius
        color: Theme.cardBackground
        border.color: Theme.line

        Symbol {
            id: symbol
            x: Theme.unit * 2
            anchors.verticalCenter: parent.verticalCenter
            name: "plus.circle.fill"
            color: Theme.accent
        }
        Headline {
            id: text
            x: symbol.x + symbol.width + Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, hint.width - x - Theme.unit * 6)
            text: qsTr("Drop to add to the list")
            Accessible.ignored: true
        }
    }
}
