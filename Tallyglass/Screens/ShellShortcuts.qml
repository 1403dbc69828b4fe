import QtQuick
import Tallyglass

// The keys that work anywhere in the window.
Item {
    id: shortcuts
    required property AppModel model
    required property ShellView shell

    Repeater {
        model: shortcuts.shell.sections.length
        Item {
            id: key
            required property int index
            Shortcut {
                sequence: "Ctrl+" + (key.index + 1)
                onActivated: shortcuts.shell.sectionIndex = key.index
            }
        }
    }
    Shortcut {
        sequence: "F5"
        onActivated: shortcuts.model.refresh()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }
}
