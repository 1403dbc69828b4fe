import QtQuick
import Tallyglass.Controls
import Tallyglass.Dashboard

// The name of a destination, how full it is and how many backups it has.
Card {
    id: header
    required property destinationHeaderContent content
    required property var tileContents

    readonly property bool stacked: width < Theme.unit * 48 * Theme.textScale
    readonly property bool tilesBelow: width < Theme.unit * 66 * Theme.textScale

    padding: Theme.unit * 3
    Accessible.name: content.name

    Item {
        id: area
        width: parent.width
        readonly property real gap: Theme.unit * 2
        // Ring, texts and tiles from top to bottom, or texts and tiles beside the ring, or the tiles below both.
        readonly property real textsHeight: texts.height + (header.tilesBelow ? 0 : gap + tiles.height)
        readonly property real headHeight: header.stacked ? ring.height + gap + texts.height
                                                          : Math.max(ring.height, textsHeight)

        implicitHeight: headHeight + (header.tilesBelow ? gap + tiles.height : 0)

        CapacityRing {
            id: ring
            x: header.stacked ? (parent.width - width) / 2 : 0
            y: header.stacked ? 0 : (parent.headHeight - height) / 2
            content: header.content.ring
        }
        Column {
            id: texts
            x: header.stacked ? 0 : ring.width + Theme.unit * 4
            y: header.stacked ? ring.height + area.gap : (parent.headHeight - parent.textsHeight) / 2
            width: parent.width - x
            spacing: Theme.unit

            Item {
                width: parent.width
                implicitHeight: Math.max(name.height, kind.height)
                Symbol {
                    id: kind
                    anchors.verticalCenter: parent.verticalCenter
                    name: header.content.symbol
                    color: Theme.accent
                    size: Theme.displaySize
                }
                GradientText {
                    id: name
                    x: kind.width + Theme.unit
                    width: Math.min(implicitWidth, parent.width - x - (lock.visible ? lock.width + Theme.unit : 0))
                    anchors.verticalCenter: parent.verticalCenter
                    text: header.content.name
                    pixelSize: Theme.displaySize
                    startColor: Theme.accent
                    endColor: Theme.accentSoft
                    Accessible.role: Accessible.Heading
                    Accessible.name: header.content.name

                    HoverHandler { id: hover }
                    LazyToolTip {
                        active: hover.hovered && name.truncated
                        text: name.text
                    }
                }
                Loader {
                    id: lock
                    x: name.x + name.width + Theme.unit
                    anchors.verticalCenter: parent.verticalCenter
                    active: header.content.isEncrypted
                    visible: active
                    sourceComponent: Symbol {
                        name: "lock.fill"
                        color: Theme.secondaryText
                        Accessible.ignored: false
                        Accessible.role: Accessible.Graphic
                        Accessible.name: qsTr("Encrypted destination")
                    }
                }
            }
            Loader {
                width: parent.width
                active: header.content.url !== ""
                visible: active
                sourceComponent: SelectableText {
                    text: header.content.url
                    color: Theme.secondaryText
                }
            }
        }
        StatTiles {
            id: tiles
            x: header.tilesBelow ? 0 : texts.x
            y: (header.tilesBelow ? area.headHeight : texts.y + texts.height) + area.gap
            width: parent.width - x
            columns: width < Theme.unit * 36 * Theme.textScale ? 1 : 3
            contents: header.tileContents
        }
    }
}
