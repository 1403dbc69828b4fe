import QtQuick
import QtQuick.Layouts
import Tallyglass

// The head of the window: title and subtitle, and at the other end what can be done from anywhere.
Rectangle {
    id: bar
    required property string title
    required property string subtitle
    default property alias actions: row.data

    // With large text in a small window, the actions stand below the title.
    readonly property bool stacked: row.implicitWidth + Theme.bodySize * 18 > width

    implicitHeight: grid.implicitHeight + Theme.unit * 3
    color: Theme.windowGround

    GridLayout {
        id: grid
        anchors { fill: parent; leftMargin: Theme.unit * 3; rightMargin: Theme.unit * 2 }
        columns: bar.stacked ? 1 : 2
        columnSpacing: Theme.unit
        rowSpacing: Theme.unit

        ColumnLayout {
            Layout.fillWidth: true
            // As high without the subtitle as with it, so that nothing moves when it comes.
            Layout.preferredHeight: title.implicitHeight + subtitle.implicitHeight
            spacing: 0
            Headline {
                id: title
                Layout.fillWidth: true
                text: bar.title
                elide: Text.ElideRight
                wrapMode: Text.NoWrap
            }
            ElidedText {
                id: subtitle
                Layout.fillWidth: true
                visible: text !== ""
                text: bar.subtitle
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
            }
        }
        RowLayout {
            id: row
            Layout.leftMargin: bar.stacked ? -Theme.unit * 1.5 : 0 // the button's text below the title
            spacing: Theme.unit
        }
    }
    Divider { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } }
}
