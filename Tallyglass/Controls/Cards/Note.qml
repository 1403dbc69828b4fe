import QtQuick
import Tallyglass.Controls

// A sentence beside a symbol.
Item {
    id: note
    required property string text
    required property string systemImage
    property color symbolColor: Theme.secondaryText
    property color textColor: Theme.secondaryText

    implicitHeight: Math.max(symbol.height, label.height)

    Symbol {
        id: symbol
        name: note.systemImage
        color: note.symbolColor
    }
    Label {
        id: label
        x: symbol.width + Theme.unit
        y: Math.max(0, (symbol.height - Theme.bodySize * 1.2) / 2) // its first line beside the symbol
        width: parent.width - x
        text: note.text
        color: note.textColor
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
    }
}
