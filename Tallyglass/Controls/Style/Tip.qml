import QtQuick
import Tallyglass.Controls

// A tool tip for the item that this stands in, made only while it is shown.
Loader {
    id: tip
    property string text
    property bool shown: false

    active: shown
    sourceComponent: ToolTip {
        parent: tip.parent
        text: tip.text
        visible: true
    }
}
