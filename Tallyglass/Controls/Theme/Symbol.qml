import QtQuick
import Tallyglass.Controls

// A symbol by the system's name for it. Decoration: what it says stands in words beside it.
Text {
    property string name
    property real size: Theme.symbolSize

    text: Symbols.glyph(name)
    visible: name !== ""
    color: Theme.text
    font.family: Theme.symbolFont
    font.pixelSize: size
    // The line of the symbol font is as high as its square; a fixed box keeps neighbours still.
    width: implicitWidth
    lineHeightMode: Text.FixedHeight
    lineHeight: size
    verticalAlignment: Text.AlignVCenter
    horizontalAlignment: Text.AlignHCenter
    textFormat: Text.PlainText
    Accessible.ignored: true
}
