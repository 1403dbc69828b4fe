import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Controls

// A comparison in four numbers, and their limits.
Card {
    id: card
    required property compareSummaryContent content

    Accessible.name: qsTr("Summary")

    StatTiles {
        width: parent.width
        columns: card.width < Theme.unit * 64 * Theme.textScale ? 2 : 4
        contents: card.content.tiles
    }
    RowLayout {
        width: parent.width
        visible: card.content.partialNote !== ""
        spacing: Theme.unit
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: "exclamationmark.triangle.fill"
            color: Theme.warning
        }
        Label {
            Layout.fillWidth: true
            text: card.content.partialNote
        }
    }
    Caption {
        width: parent.width
        visible: text !== ""
        text: card.content.depthNote
    }
}
