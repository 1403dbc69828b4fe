import QtQuick
import QtQuick.Layouts
import Tallyglass

// Which destination this is, how full it is and how many backups it holds.
Card {
    id: header
    required property destinationHeaderContent content

    readonly property bool stacked: width < Theme.unit * 56 * Theme.textScale

    padding: Theme.unit * 3
    Accessible.name: content.name

    GridLayout {
        Layout.fillWidth: true
        columns: header.stacked ? 1 : 2
        columnSpacing: Theme.unit * 4
        rowSpacing: Theme.unit * 2

        CapacityRing {
            Layout.alignment: header.stacked ? Qt.AlignHCenter : Qt.AlignVCenter
            content: header.content.ring
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2

            RowLayout {
                Layout.fillWidth: true
                spacing: Theme.unit
                Symbol {
                    name: header.content.symbol
                    color: Theme.accent
                    size: Theme.displaySize
                }
                GradientText {
                    id: name
                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth
                    text: header.content.name
                    pixelSize: Theme.displaySize
                    startColor: Theme.accent
                    endColor: Theme.accentSoft
                    Accessible.role: Accessible.Heading
                    Accessible.name: header.content.name

                    HoverHandler { id: hover }
                    Loader {
                        active: hover.hovered && name.truncated
                        sourceComponent: HoverTip {
                            parent: name
                            text: name.text
                            visible: true
                        }
                    }
                }
                Symbol {
                    visible: header.content.isEncrypted
                    name: "lock.fill"
                    color: Theme.secondaryText
                    Accessible.ignored: false
                    Accessible.role: Accessible.Graphic
                    Accessible.name: qsTr("Encrypted destination")
                }
                Item { Layout.fillWidth: true }
            }
            SelectableText {
                Layout.fillWidth: true
                visible: text !== ""
                text: header.content.url
                color: Theme.secondaryText
            }
            GridLayout {
                Layout.fillWidth: true
                Layout.topMargin: Theme.unit * 1.5
                columns: header.width < Theme.unit * 44 * Theme.textScale ? 1 : 3
                columnSpacing: Theme.unit * 3
                rowSpacing: Theme.unit * 1.5
                Repeater {
                    model: [header.content.used, header.content.free, header.content.backups]
                    StatTile {
                        required property statTileContent modelData
                        Layout.alignment: Qt.AlignTop
                        Layout.preferredWidth: Theme.unit * 12
                        label: modelData.label
                        value: modelData.value
                        caption: modelData.caption
                    }
                }
            }
        }
    }
}
