import QtQuick
import Tallyglass.BackupChanges
import Tallyglass.Controls

// The progress of a comparison: step, elapsed time, received bytes, and a button that stops it.
Column {
    id: progress
    required property backupChangesContent content
    signal cancelRequested

    spacing: Theme.unit

    BusyIndicator {
        width: parent.width
        height: size + Theme.unit
        size: Theme.displaySize * 1.5
        color: Theme.accent
    }
    Headline {
        width: parent.width
        text: progress.content.progress
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
    }
    Label {
        width: parent.width
        text: progress.content.elapsed
        horizontalAlignment: Text.AlignHCenter
    }
    Label {
        width: parent.width
        visible: text !== ""
        text: progress.content.received
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
    Caption {
        width: parent.width
        visible: text !== ""
        topPadding: Theme.unit
        text: progress.content.networkNote
        horizontalAlignment: Text.AlignHCenter
    }
    FocusScope {
        width: parent.width
        focus: true
        implicitHeight: cancel.y + cancel.height
        height: implicitHeight
        Button {
            id: cancel
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.unit
            focus: true
            text: qsTr("Cancel")
            onClicked: progress.cancelRequested()
        }
    }
}
