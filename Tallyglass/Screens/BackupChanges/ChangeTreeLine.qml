import QtQuick
import QtQuick.Templates as T
import Tallyglass.BackupChanges
import Tallyglass.Controls

// One line of the tree: how deep it is, whether it opens, what changed, and below that why a folder can't be shown.
FocusScope {
    id: line
    required property changeTreeRow row
    required property int index
    signal picked
    signal toggled
    signal menuRequested(real x, real y)

    readonly property bool current: ListView.isCurrentItem
    readonly property real step: Theme.unit * 2
    // Leaves half of the width to the change, however deep it is.
    readonly property real blank: Math.min(row.indent * step, width / 2)

    implicitHeight: change.implicitHeight + (error.visible ? error.implicitHeight + Theme.unit : 0)

    Rectangle {
        anchors { fill: parent; leftMargin: Theme.unit / 2; rightMargin: Theme.unit / 2 }
        radius: Theme.controlRadius
        color: line.current ? Theme.selectedBackground : Theme.hoverBackground
        visible: line.current || hover.hovered
        opacity: line.current && !line.activeFocus ? 0.6 : 1
    }
    HoverHandler { id: hover }
    TapHandler {
        onTapped: line.picked()
        onDoubleTapped: line.toggled()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            line.picked();
            line.menuRequested(eventPoint.position.x, eventPoint.position.y);
        }
    }

    Item {
        id: disclosure
        x: Theme.unit * 1.5 + line.blank
        width: line.step
        height: change.height

        T.AbstractButton {
            anchors.centerIn: parent
            width: line.step + Theme.unit
            height: parent.height
            visible: line.row.isExpandable && !line.row.isLoading
            focusPolicy: Qt.NoFocus
            hoverEnabled: true
            Accessible.name: line.row.disclosureLabel
            Accessible.onPressAction: line.toggled()
            onClicked: {
                line.picked();
                line.toggled();
            }

            Symbol {
                anchors.centerIn: parent
                name: "chevron.right"
                size: line.step * 1.2
                color: parent.hovered ? Theme.text : Theme.secondaryText
                rotation: line.row.isExpanded ? 90 : 0
            }
        }
        BusyIndicator {
            anchors.centerIn: parent
            visible: line.row.isLoading
            size: line.step * 0.9
            label: qsTr("Loading folder")
        }
    }
    ChangeRow {
        id: change
        x: disclosure.x + disclosure.width + Theme.unit
        width: line.width - x - Theme.unit * 2
        focus: true
        content: line.row.change
        Accessible.focusable: true
    }
    Caption {
        id: error
        x: disclosure.x + line.step + 42
        y: change.height
        width: line.width - x - Theme.unit * 2
        visible: text !== ""
        text: line.row.error
    }
}
