import QtQuick
import QtQuick.Templates as T
import Tallyglass.BackupChanges
import Tallyglass.Controls

// A row of the tree: a changed path, indented, with a button for a folder and the reason why one can't be shown.
ChangeRow {
    id: line
    required property changeTreeRow row
    signal toggled

    readonly property real step: Theme.unit * 2
    // Leaves half of the width to the change, however deep it is.
    readonly property real disclosureX: Theme.unit * 1.5 + Math.min(row.indent * step, width / 2)

    implicitHeight: Theme.rowHeight + (error.visible ? error.implicitHeight + Theme.unit : 0)
    change: row.change
    leftPadding: disclosureX + step + Theme.unit
    inset: Theme.unit / 2
    onDoubleClicked: toggled()

    Item {
        x: line.disclosureX
        width: line.step
        height: Theme.rowHeight

        T.AbstractButton {
            id: disclosure
            anchors.centerIn: parent
            width: line.step + Theme.unit
            height: parent.height
            visible: line.row.isExpandable && !line.row.isLoading
            focusPolicy: Qt.NoFocus
            hoverEnabled: true
            Accessible.name: line.row.disclosureLabel
            Accessible.onPressAction: line.toggled()
            onClicked: {
                line.list.selectByPointer(line.index);
                line.toggled();
            }

            Symbol {
                anchors.centerIn: parent
                name: "chevron.right"
                size: line.step * 1.2
                color: disclosure.hovered ? Theme.text : Theme.secondaryText
                rotation: line.row.isExpanded ? 90 : 0
            }
        }
        BusyIndicator {
            anchors.centerIn: parent
            running: line.row.isLoading
            visible: running
            size: line.step * 0.9
            label: qsTr("Loading folder")
        }
    }
    Caption {
        id: error
        x: line.disclosureX + line.step + 42
        y: Theme.rowHeight
        width: line.width - x - Theme.unit * 2
        visible: text !== ""
        text: line.row.error
    }
}
