import QtQuick
import Tallyglass

// Starts a backup, or stops the one that runs.
AppButton {
    id: button
    required property AppModel model

    kind: AppButton.Tool
    text: backup.content.text
    systemImage: backup.content.symbol
    onClicked: backup.press()

    BackupButtonState {
        id: backup
        model: button.model
    }
}
