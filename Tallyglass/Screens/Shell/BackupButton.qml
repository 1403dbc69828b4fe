import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Shell

// Starts a backup, or stops the running one.
Button {
    id: button
    required property ScreenContext context

    flat: true
    text: buttonViewModel.content.text
    systemImage: buttonViewModel.content.symbol
    onClicked: buttonViewModel.press()

    BackupButtonViewModel {
        id: buttonViewModel
        context: button.context
    }
}
