import QtQuick
import QtQuick.Layouts
import Tallyglass

// The fill level of a destination, as a ring around its percentage.
Item {
    id: ring
    required property capacityRingContent content
    property real diameter: Theme.unit * 15 * Theme.textScale
    property real lineWidth: Theme.unit * 1.5 * Theme.textScale

    implicitWidth: diameter
    implicitHeight: diameter
    Accessible.role: Accessible.StaticText
    Accessible.name: content.accessibleName
    Accessible.description: content.accessibleValue

    CapacityArc {
        anchors.fill: parent
        lineWidth: ring.lineWidth
        fraction: ring.content.fraction
        color: Theme.colors[ring.content.role]
        trackColor: Theme.track
        Behavior on fraction {
            enabled: !Theme.reduceMotion
            NumberAnimation { duration: Theme.motion; easing.type: Easing.OutCubic }
        }
    }
    RowLayout {
        anchors.centerIn: parent
        spacing: Theme.unit / 2
        Symbol {
            name: ring.content.symbol
            color: Theme.colors[ring.content.role]
        }
        TextLabel {
            text: ring.content.text
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    HoverHandler { id: hover }
    Loader {
        active: hover.hovered && ring.content.detail !== ""
        sourceComponent: HoverTip {
            parent: ring
            text: ring.content.detail
            visible: true
        }
    }
}
