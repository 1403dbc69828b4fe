import QtQuick
import Tallyglass.Controls

// Takes local files and folders that are dropped on it. While some are dragged over it, says what would happen.
DropArea {
    id: area
    required property string text
    signal filesDropped(var urls) // of which at least one is local

    onEntered: drag => drag.accepted = drag.urls.some(url => url.toString().startsWith("file:"))
    onDropped: drop => {
        filesDropped(drop.urls);
        drop.accept(Qt.CopyAction); // never a move, after which the items would be deleted
    }

    Rectangle {
        anchors { fill: parent; margins: Theme.unit }
        visible: area.containsDrag
        radius: Theme.radius
        color: Theme.scrim
        border { width: 2; color: Theme.accent }

        Rectangle {
            anchors.centerIn: parent
            width: hint.x + hint.width + Theme.unit * 2
            height: hint.height + Theme.unit * 3
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
                id: hint
                x: symbol.x + symbol.width + Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, area.width - x - Theme.unit * 8)
                text: area.text
            }
        }
    }
}
