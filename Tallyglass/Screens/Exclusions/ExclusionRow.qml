import QtQuick
import Tallyglass.Controls
import Tallyglass.Exclusions

// A watched item: whether it is excluded and why, the switch for that or why there is none, and the button that takes
// it off the list. When the row is narrow, the switch is below the text.
ItemRow {
    id: row
    required property exclusionRowContent status
    required property bool busy // keeps the controls disabled
    property real leftPadding: Theme.unit * 2
    property real rightPadding: Theme.unit * 2
    signal toggle(bool excluded)
    signal stopTracking

    readonly property bool stacked: width < control.width + Theme.bodySize * 26

    implicitHeight: Math.max(Theme.rowHeight, texts.y * 2 + texts.height
                             + (stacked && control.height > 0 ? control.height + Theme.unit / 2 : 0))
    inset: Theme.unit - 1
    label: status.path
    description: status.detail
    toolTip: path.truncated && !stop.hovered ? status.path : ""

    Symbol {
        id: symbol
        x: row.leftPadding
        y: texts.y + (path.height - height) / 2
        visible: !row.status.isChanging
        name: row.status.symbol
        color: Theme.colors[row.status.role]
    }
    BusyIndicator {
        x: symbol.x
        y: symbol.y
        size: symbol.size
        running: row.status.isChanging
        visible: running
        label: row.status.detail
    }
    Column {
        id: texts
        x: symbol.x + symbol.width + Theme.unit * 1.5
        y: Theme.unit
        width: (row.stacked ? stop.x : control.x) - x - Theme.unit * 2

        Label {
            id: path
            width: parent.width
            text: row.status.path
            wrapMode: Text.NoWrap
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
        Caption {
            width: parent.width
            text: row.status.detail
            Accessible.ignored: true
        }
    }
    Item {
        id: control
        x: row.stacked ? texts.x : stop.x - width - Theme.unit
        y: row.stacked ? texts.y + texts.height + Theme.unit / 2 : (row.height - height) / 2
        width: row.status.canToggle ? excluded.implicitWidth : reason.implicitWidth
        height: row.status.canToggle ? excluded.implicitHeight : reason.text === "" ? 0 : reason.implicitHeight

        Switch {
            id: excluded
            visible: row.status.canToggle
            enabled: !row.busy
            focusPolicy: Qt.NoFocus // by keyboard it is the list that toggles
            text: qsTr("Excluded")
            checked: row.status.isExcluded
            onToggled: row.toggle(checked)
        }
        Caption {
            id: reason
            visible: !row.status.canToggle && text !== ""
            text: row.status.reason
            wrapMode: Text.NoWrap
        }
    }
    Button {
        id: stop
        anchors { right: parent.right; rightMargin: row.rightPadding }
        y: row.stacked ? texts.y + (path.height - height) / 2 : (row.height - height) / 2
        flat: true
        enabled: !row.busy
        opacity: !enabled ? 0.4 : hovered ? 1 : 0.65 // one in each row, which mustn't outshine the text
        focusPolicy: Qt.NoFocus
        systemImage: "xmark.circle.fill"
        hint: qsTr("Stop tracking this item here. Does not change its exclusion.")
        Accessible.name: qsTr("Stop tracking")
        Accessible.description: hint
        onClicked: row.stopTracking()
    }
}
