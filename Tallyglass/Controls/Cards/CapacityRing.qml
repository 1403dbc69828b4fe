import QtQuick
import Tallyglass.Controls

// The fill level of a destination, as a ring around its percentage.
Item {
    id: ring
    required property capacityRingContent content
    property real diameter: Theme.unit * 15 * Theme.textScale
    property real lineWidth: Theme.unit * 1.5 * Theme.textScale
    readonly property real fraction: content.fraction
    property bool ready: false

    implicitWidth: diameter
    implicitHeight: diameter
    Accessible.role: Accessible.StaticText
    Accessible.name: content.accessibleName
    Accessible.description: content.accessibleValue
    onFractionChanged: {
        animation.stop();
        animation.to = fraction;
        if (ready && !Theme.reduceMotion)
            animation.start();
        else
            arc.fraction = fraction;
    }
    Component.onCompleted: ready = true

    CapacityArc {
        id: arc
        anchors.fill: parent
        lineWidth: ring.lineWidth
        color: Theme.colors[ring.content.role]
        trackColor: Theme.track

        NumberAnimation {
            id: animation
            target: arc
            property: "fraction"
            duration: Theme.animationDuration
            easing.type: Easing.OutCubic
        }
    }
    Row {
        anchors.centerIn: parent
        spacing: Theme.unit / 2
        Loader {
            anchors.verticalCenter: parent.verticalCenter
            active: ring.content.symbol !== ""
            visible: active
            sourceComponent: Symbol {
                name: ring.content.symbol
                color: Theme.colors[ring.content.role]
            }
        }
        Label {
            text: ring.content.text
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    HoverHandler { id: hover }
    LazyToolTip {
        active: hover.hovered && ring.content.detail !== ""
        text: ring.content.detail
    }
}
