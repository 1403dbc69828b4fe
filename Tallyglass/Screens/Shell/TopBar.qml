import QtQuick
import Tallyglass.Controls

// The head of the window: title and subtitle, and at the other end what can be done from anywhere.
Item {
    id: bar
    required property string title
    required property string subtitle
    default property alias actions: tools.data

    // With large text in a small window, the actions stand below the title.
    readonly property bool stacked: tools.width + Theme.bodySize * 18 > width
    // As high without the subtitle as with it, so that nothing moves when it comes.
    readonly property real wordsHeight: title.implicitHeight + subtitle.implicitHeight

    implicitHeight: Theme.unit * 3 + (stacked ? wordsHeight + Theme.unit + tools.height
                                              : Math.max(wordsHeight, tools.height))

    Item {
        id: words
        x: Theme.unit * 3
        y: Theme.unit * 1.5 + (bar.stacked ? 0 : (bar.height - Theme.unit * 3 - bar.wordsHeight) / 2)
        width: (bar.stacked ? bar.width - Theme.unit * 2 : tools.x - Theme.unit) - x
        Headline {
            id: title
            y: subtitle.visible ? 0 : (bar.wordsHeight - height) / 2
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
        // Stacked, the text of the first button stands below the title.
        x: bar.stacked ? Theme.unit * 1.5 : bar.width - width - Theme.unit * 2
        y: bar.stacked ? words.y + bar.wordsHeight + Theme.unit : (bar.height - height) / 2
    }
    Rectangle {
        width: parent.width
        height: 1
        anchors.bottom: parent.bottom
        color: Theme.line
    }
}
