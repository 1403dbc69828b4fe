import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// A modal question or message: a symbol, a title, a text and up to two buttons. Escape answers like the button that
// cancels, or like the only one.
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
            highlighted: true
            text: alert.confirmText
            focus: true
            onClicked: {
                alert.confirmed = true;
                alert.close();
            }
        }
    ]
}
