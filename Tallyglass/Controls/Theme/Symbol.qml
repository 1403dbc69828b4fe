import QtQuick
import Tallyglass.Controls

// A symbol by its name in the system. Decoration: the text beside it has its meaning.
Text {
    property string name
    property real size: Theme.symbolSize

    text: Symbols.glyph(name)
    visible: name !== ""
    color: Theme.text
    font.family: Theme.symbolFont
    font.pixelSize: size
    // A glyph of the symbol font is square; a box of fixed size keeps neighbours still.
    width: implicitWidth
    lineHeightMode: Text.FixedHeight
    lineHeight: size
    verticalAlignment: Text.AlignVCenter
    horizontalAlignment: Text.AlignHCenter
    textFormat: Text.PlainText
    Accessible.ignored: true
}
