import QtQuick
import Tallyglass.Controls

// A piece of text in the style of the body; the other styles derive from it.
Text {
    color: Theme.text
    font.pixelSize: Theme.bodySize
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
