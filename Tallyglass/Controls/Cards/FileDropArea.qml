import QtQuick
import Tallyglass.Controls

// Takes files and folders that are dropped on it. While some are dragged over it, says what would happen.
DropArea {
    id: area
    required property string text
    signal filesDropped(var urls) // a list of URLs

    keys: ["text/uri-list"]
    z: 2
    onDropped: drop => {
        if (!drop.hasUrls)
            return;
        drop.accept(Qt.CopyAction);
        filesDropped(drop.urls);
    }

    Rectangle {
        anchors { fill: parent; margins: Theme.unit }
        visible: area.containsDrag
        radius: Theme.radius
        color: Theme.selectedBackground
        opacity: 0.95
        border { color: Theme.accent; width: 2 }
        Headline {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: Theme.unit * 2 }
            text: area.text
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
