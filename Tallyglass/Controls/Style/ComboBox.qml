import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// Picks one of any number of entries, of which only those in sight are made. The arrows, Home and End change the
// choice, the space bar opens the list, typing goes to the entry that begins so. `pickedIndex` is what is
// picked; a choice of the user is told by `activated`.
T.ComboBox {
    id: box
    property string label
    property int pickedIndex: -1

    currentIndex: pickedIndex
    onCountChanged: currentIndex = Qt.binding(() => pickedIndex) // the list has its own idea when it changes
    onModelChanged: currentIndex = Qt.binding(() => pickedIndex)

    implicitWidth: Theme.unit * 5 + Theme.bodySize * 12
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 1.25
    rightPadding: indicator.width + Theme.unit * 1.25
    opacity: enabled ? 1 : 0.5
    Accessible.name: label
    Accessible.description: displayText
    Accessible.onPressAction: if (enabled) popup.open()
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function step(by: int) {
        const target = Math.max(0, Math.min(count - 1, currentIndex + by));
        if (enabled && target !== currentIndex)
            activated(target);
    }

    contentItem: Label {
        text: box.displayText
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: box.width - width - Theme.unit * 0.75
        y: (box.height - height) / 2
        name: "chevron.down"
        color: Theme.secondaryText
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: box.enabled && (box.hovered || box.down) ? Theme.hoverBackground : Theme.controlBackground
        border.color: Theme.line
        FocusRing { shown: box.visualFocus }
    }

    delegate: T.ItemDelegate {
        id: entry
        required property int index
        required text
        readonly property bool current: index === box.currentIndex

        width: ListView.view ? ListView.view.width : 0
        implicitHeight: Theme.controlHeight
        leftPadding: Theme.unit
        rightPadding: Theme.unit * 2
        highlighted: index === box.highlightedIndex
        hoverEnabled: true
        Accessible.name: text
        Accessible.selectable: true
        Accessible.selected: current
        Accessible.focused: highlighted
        Accessible.onPressAction: clicked()

        contentItem: RowLayout {
            spacing: Theme.unit
            Label {
                Layout.fillWidth: true
                text: entry.text
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
                font.weight: entry.current ? Font.DemiBold : Font.Normal
                Accessible.ignored: true
            }
            Symbol {
                opacity: entry.current ? 1 : 0
                name: "checkmark"
                color: Theme.accent
            }
        }
        background: Rectangle {
            radius: Theme.controlRadius - 2
            color: entry.highlighted ? Theme.hoverBackground : "transparent"
        }
    }

    popup: T.Popup {
        readonly property real room: box.Window.window ? box.Window.window.height - Theme.unit * 4 : 400

        y: box.height + Theme.unit / 2
        width: box.width
        height: Math.min(entries.contentHeight + topPadding + bottomPadding, Theme.controlHeight * 10, room)
        margins: Theme.unit
        padding: Theme.unit / 2

        enter: Transition {
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.animationDuration / 2 }
        }
        contentItem: ListView {
            id: entries
            clip: true
            model: box.delegateModel
            currentIndex: box.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: box.label
            T.ScrollBar.vertical: ScrollBar {}
        }
        background: Rectangle {
            color: Theme.cardBackground
            radius: Theme.controlRadius + 2
            border.color: Theme.line
        }
    }
}
