import QtQuick
import Tallyglass.Controls

// A tool tip above a point of its parent.
ToolTip {
    required property point bar

    x: parent ? Math.max(0, Math.min(parent.width - width, bar.x - width / 2)) : 0
    y: bar.y - height - Theme.unit
    delay: 0
}
