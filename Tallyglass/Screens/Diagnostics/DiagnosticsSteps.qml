import QtQuick
import Tallyglass.Controls
import Tallyglass.Diagnostics

// How many probes of a capture succeeded, and one row for each.
Column {
    id: steps
    required property diagnosticsContent content

    spacing: Theme.unit * 0.75

    Label {
        width: parent.width
        bottomPadding: Theme.unit / 4
        text: steps.content.summary
        font.weight: Font.DemiBold
    }
    Repeater {
        model: steps.content.steps
        Item {
            id: step
            required property diagnosticsStepContent modelData
            width: steps.width
            implicitHeight: texts.height
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.label
            Accessible.description: modelData.accessibleValue

            Symbol {
                id: symbol
                name: step.modelData.symbol
                color: Theme.colors[step.modelData.role]
            }
            Column {
                id: texts
                x: symbol.width + Theme.unit
                width: parent.width - x
                Label {
                    width: parent.width
                    text: step.modelData.label
                    Accessible.ignored: true
                }
                Caption {
                    width: parent.width
                    visible: text !== ""
                    text: step.modelData.detail
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    Accessible.ignored: true
                }
            }
        }
    }
}
