import QtQuick
import Tallyglass.Controls
import Tallyglass.Exclusions

// The paths that Time Machine skips by its own settings.
Card {
    id: card
    required property ExclusionsViewModel viewModel

    title: qsTr("System-wide rules")
    systemImage: "lock.fill"

    Label {
        width: parent.width
        text: qsTr("Path rules stored in Time Machine's own settings. Changing these requires administrator "
                   + "privileges, which Tallyglass does not request — use System Settings → General → Time Machine "
                   + "→ Options.")
        color: Theme.secondaryText
    }
    Column {
        id: paths
        width: parent.width
        spacing: Theme.unit * 0.75

        Repeater {
            model: card.viewModel.skipPaths
            Item {
                id: line
                required property string modelData
                width: paths.width
                implicitHeight: Math.max(symbol.height, path.height)

                Symbol {
                    id: symbol
                    name: "minus.circle"
                    color: Theme.secondaryText
                }
                SelectableText {
                    id: path
                    x: symbol.width + Theme.unit
                    y: Math.max(0, (symbol.height - Theme.bodySize * 1.2) / 2) // its first line beside the symbol
                    width: parent.width - x
                    text: line.modelData
                }
            }
        }
    }
}
