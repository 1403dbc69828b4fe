import QtQuick
import Tallyglass.Controls

// A symbol by its name in the system. Decoration: the text beside it has its meaning.
SymbolShape {
    size: Theme.symbolSize
    color: Theme.text
    visible: name !== ""
    Accessible.ignored: true
}
