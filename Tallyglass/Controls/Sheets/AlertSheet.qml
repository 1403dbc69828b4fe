import QtQuick
import QtQuick.Layouts
import Tallyglass.Context
import Tallyglass.Controls

// A question or a message that has to be answered before anything else: a symbol, a title, a text and up to two
// buttons. Escape answers as the cancelling button does, or as the only one.
Sheet {
    id: alert
    property string systemImage: "info.circle"
    property color symbolColor: Theme.accent
    property string text
    property string confirmText: qsTr("OK")
    property string cancelText
    signal answered(bool confirmed)

    property bool confirmed: false

    preferredWidth: Theme.unit * 52
    onAboutToShow: confirmed = false
    onClosed: answered(confirmed)

    RowLayout {
        width: parent.width
        spacing: Theme.unit * 2
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: alert.systemImage
            color: alert.symbolColor
            size: Theme.displaySize * 1.2
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit
            Headline {
                Layout.fillWidth: true
                text: alert.title
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: alert.text
                color: Theme.secondaryText
            }
        }
    }
    buttons: [
        Item { Layout.fillWidth: true },
        Button {
            visible: alert.cancelText !== ""
            text: alert.cancelText
            onClicked: alert.close()
        },
        Button {
            kind: Button.Prominent
            text: alert.confirmText
            focus: true
            onClicked: {
                alert.confirmed = true;
                alert.close();
            }
        }
    ]
}
