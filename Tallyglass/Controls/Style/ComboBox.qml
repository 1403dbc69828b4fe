import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// Picks one of any number of entries, of which only the visible ones exist. The arrows, Home and End change the
// choice, the space bar opens the list, typing goes to the entry that begins so.
T.ComboBox {
    id: control
    property string label

    implicitWidth: Theme.unit * 5 + Theme.bodySize * 12
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 1.25
    rightPadding: indicator.width + Theme.unit * 1.25
    opacity: enabled ? 1 : 0.5
    Accessible.name: label
    Accessible.description: displayText
    Accessible.onPressAction: if (enabled) popup.open()
    Accessible.onIncreaseAction: stepByUser(1)
    Accessible.onDecreaseAction: stepByUser(-1)

    function stepByUser(by: int) {
        const before = currentIndex;
        if (enabled && by > 0)
            incrementCurrentIndex();
        else if (enabled)
            decrementCurrentIndex();
        if (currentIndex !== before)
            activated(currentIndex);
    }

    contentItem: Label {
        text: control.displayText
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: control.width - width - Theme.unit * 0.75
        y: (control.height - height) / 2
        name: "chevron.down"
        color: Theme.secondaryText
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.enabled && (control.hovered || control.down) ? Theme.hoverBackground : Theme.controlBackground
        border.color: Theme.line
        FocusRing { visible: control.visualFocus }
    }

    delegate: T.ItemDelegate {
        id: entry
        required property int index
        required text
        readonly property bool current: index === control.currentIndex

        width: ListView.view ? ListView.view.width : 0
        implicitHeight: Theme.controlHeight
        leftPadding: Theme.unit
        rightPadding: Theme.unit * 2
        highlighted: index === control.highlightedIndex
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
        readonly property real maximumHeight: control.Window.window ? control.Window.window.height - Theme.unit * 4 : 400

        y: control.height + Theme.unit / 2
        width: control.width
        height: Math.min(entries.contentHeight + topPadding + bottomPadding, Theme.controlHeight * 10, maximumHeight)
        margins: Theme.unit
        padding: Theme.unit / 2

        enter: Transition {
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.animationDuration / 2 }
        }
        contentItem: ListView {
            id: entries
            clip: true
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: control.label
            T.ScrollBar.vertical: ScrollBar {}
        }
        background: Rectangle {
            color: Theme.cardBackground
            radius: Theme.controlRadius + 2
            border.color: Theme.line
        }
    }
}
