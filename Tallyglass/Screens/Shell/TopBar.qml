import QtQuick
import Tallyglass.Controls

// The bar at the top of the window: title and subtitle at the left, actions at the right.
Item {
    id: bar
    required property string title
    required property string subtitle
    default property alias actions: tools.data

    // With large text in a small window, the actions are below the title.
    readonly property bool stacked: tools.width + Theme.bodySize * 18 > width
    // The height includes an absent subtitle, so that nothing moves when it appears.
    readonly property real titlesHeight: title.implicitHeight + subtitle.implicitHeight

    implicitHeight: Theme.unit * 3 + (stacked ? titlesHeight + Theme.unit + tools.height
                                              : Math.max(titlesHeight, tools.height))

    Item {
        id: titles
        x: Theme.unit * 3
        y: Theme.unit * 1.5 + (bar.stacked ? 0 : (bar.height - Theme.unit * 3 - bar.titlesHeight) / 2)
        width: (bar.stacked ? bar.width - Theme.unit * 2 : tools.x - Theme.unit) - x
        Headline {
            id: title
            y: subtitle.visible ? 0 : (bar.titlesHeight - height) / 2
            width: parent.width
            text: bar.title
            elide: Text.ElideRight
            wrapMode: Text.NoWrap
        }
        ElidedText {
            id: subtitle
            y: title.height
            width: parent.width
            visible: text !== ""
            text: bar.subtitle
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
        }
    }
    Row {
        id: tools
        // When stacked, the text of the first button is aligned with the title.
        x: bar.stacked ? Theme.unit * 1.5 : bar.width - width - Theme.unit * 2
        y: bar.stacked ? titles.y + bar.titlesHeight + Theme.unit : (bar.height - height) / 2
    }
    Rectangle {
        width: parent.width
        height: 1
        anchors.bottom: parent.bottom
        color: Theme.line
    }
}
