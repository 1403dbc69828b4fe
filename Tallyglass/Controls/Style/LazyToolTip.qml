import QtQuick
import Tallyglass.Controls

// A tool tip of its parent that exists only while it is `active`, for items of which there are many.
Loader {
    id: loader
    property string text

    active: false
    sourceComponent: ToolTip {
        parent: loader.parent
        text: loader.text
        visible: true
    }
}
