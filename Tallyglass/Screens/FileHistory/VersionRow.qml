import QtQuick
import Tallyglass.Controls
import Tallyglass.FileHistory

// A distinct version: its number and colour, when it was last seen, and a button that exports it.
ItemRow {
    id: row
    required property versionRowContent version
    property real leftPadding: Theme.unit * 2
    property real rightPadding: Theme.unit * 2
    property bool canExport: true
    signal exportRequested

    implicitHeight: Theme.rowHeight
    label: version.label
    description: version.details
    toolTip: title.truncated || details.truncated ? version.title + "\n" + version.details : ""

    Rectangle {
        id: mark
        x: row.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(number.implicitWidth, number.implicitHeight) + Theme.unit
        height: number.implicitHeight + Theme.unit * 0.75
        radius: Theme.controlRadius - 2
        color: Theme.seriesColors[(row.version.number - 1) % Theme.seriesColors.length]
        Caption {
            id: number
            anchors.centerIn: parent
            text: row.version.number
            color: Theme.onAccent
            font.weight: Font.DemiBold
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    Label {
        id: title
        anchors { left: mark.right; leftMargin: Theme.unit * 1.5; bottom: parent.verticalCenter }
        anchors.bottomMargin: -Theme.captionSize * 0.1
        width: Math.min(implicitWidth, exportButton.x - x - Theme.unit * 2 - (latest.visible ? latest.width + Theme.unit : 0))
        text: row.version.title
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Rectangle {
        id: latest
        anchors { left: title.right; leftMargin: Theme.unit; verticalCenter: title.verticalCenter }
        visible: row.version.isLatest
        width: latestText.implicitWidth + Theme.unit
        height: latestText.implicitHeight + 2
        radius: height / 2
        color: Theme.accent
        Caption {
            id: latestText
            anchors.centerIn: parent
            text: qsTr("LATEST")
            color: Theme.onAccent
            font.weight: Font.DemiBold
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    Caption {
        id: details
        anchors { left: title.left; right: exportButton.left; rightMargin: Theme.unit * 2; top: title.bottom }
        text: row.version.details
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Button {
        id: exportButton
        anchors { right: parent.right; rightMargin: row.rightPadding; verticalCenter: parent.verticalCenter }
        text: row.width < Theme.unit * 44 * Theme.textScale ? "" : qsTr("Export")
        hint: text === "" ? qsTr("Export") : ""
        systemImage: "square.and.arrow.up"
        enabled: row.canExport
        focusPolicy: Qt.NoFocus
        Accessible.description: row.label
        onClicked: row.exportRequested()
    }
}
