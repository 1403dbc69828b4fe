import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Shell

// Starts a backup, or stops the one that runs.
Button {
    id: button
    required property ScreenContext context

    kind: Button.Tool
    text: backup.content.text
    systemImage: backup.content.symbol
    onClicked: backup.press()

    BackupButtonViewModel {
        id: backup
        context: button.context
    }
}
