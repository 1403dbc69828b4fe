import QtQuick
import Tallyglass

// What a comparison is doing, for how long and how much it brought, and how to stop it.
Stack {
    id: progress
    required property backupChangesContent content
    signal cancelRequested

    spacing: Theme.unit

    Spinner {
        height: size + Theme.unit
        size: Theme.displaySize * 1.5
        color: Theme.accent
    }
    Headline {
        text: progress.content.progress
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
    }
    TextLabel {
        text: progress.content.elapsed
        horizontalAlignment: Text.AlignHCenter
    }
    TextLabel {
        visible: text !== ""
        text: progress.content.received
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
    Caption {
        visible: text !== ""
        topPadding: Theme.unit
        text: progress.content.networkNote
        horizontalAlignment: Text.AlignHCenter
    }
    FocusScope {
        focus: true
        implicitHeight: cancel.y + cancel.height
        height: implicitHeight
        AppButton {
            id: cancel
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.unit
            focus: true
            text: qsTr("Cancel")
            onClicked: progress.cancelRequested()
        }
    }
}
