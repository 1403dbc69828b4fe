import QtQuick
import Tallyglass.Controls

// A note below the last row of a list, such as that there are more. Takes no room while it is empty.
Item {
    property alias text: note.text

    width: ListView.view?.width ?? 0
    implicitHeight: note.text === "" ? 0 : note.implicitHeight

    Caption {
        id: note
        width: parent.width
        visible: text !== ""
        padding: Theme.unit * 2
        horizontalAlignment: Text.AlignHCenter
    }
}
