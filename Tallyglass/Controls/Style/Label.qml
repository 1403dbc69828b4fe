import QtQuick
import Tallyglass.Controls

// Body text; the other text styles derive from it. Not over the template, which makes static text of a heading.
Text {
    color: Theme.text
    font.pixelSize: Theme.bodySize
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
