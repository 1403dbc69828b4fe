import QtQuick
import Tallyglass.Context

// The keyboard shortcuts of the whole window.
Item {
    id: shortcuts
    required property ScreenContext context
    required property int sectionCount
    signal sectionRequested(int index)

    Repeater {
        model: shortcuts.sectionCount
        Item {
            id: key
            required property int index
            Shortcut {
                sequence: "Ctrl+" + (key.index + 1)
                onActivated: shortcuts.sectionRequested(key.index)
            }
        }
    }
    Shortcut {
        sequence: "F5"
        onActivated: shortcuts.context.model.refresh()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }
}
