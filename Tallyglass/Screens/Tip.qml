import QtQuick
import Tallyglass

// A text that appears under the pointer, for the item that this stands in.
Later {
    id: tip
    property string text

    file: "HoverTip.qml"
    inputs: () => ({ parent: tip.parent, text: tip.text, visible: true })
}
