import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Body text; the other text styles derive from it.
T.Label {
    color: Theme.text
    font.pixelSize: Theme.bodySize
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
