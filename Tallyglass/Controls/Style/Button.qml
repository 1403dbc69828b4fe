import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// A button in one of three weights. With `systemImage` a symbol stands before the text; a tool button
// without text needs a `hint`, which names it.
T.Button {
    id: button
    enum Kind { Plain, Prominent, Tool }
    property int kind: Button.Plain
    property string systemImage
    property string hint

    readonly property color ink: kind === Button.Prominent ? Theme.onAccent : Theme.text

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, implicitHeight)
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    horizontalPadding: text === "" ? Theme.unit / 2 : Theme.unit * 1.5
    verticalPadding: Theme.unit / 2
    opacity: enabled ? 1 : 0.5
    Accessible.onPressAction: if (enabled) clicked()
    Accessible.name: text === "" ? hint : text
    Accessible.description: text === "" ? "" : hint

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight
        RowLayout {
            id: row
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width)
            spacing: Theme.unit * 0.75
            Symbol {
                name: button.systemImage
                color: button.kind === Button.Plain ? Theme.accent : button.ink
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: button.text
                color: button.ink
                font.weight: button.kind === Button.Prominent ? Font.DemiBold : Font.Normal
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: button.kind === Button.Prominent ? Theme.accent
             : button.hovered || button.down ? Theme.hoverBackground
             : button.kind === Button.Tool ? "transparent" : Theme.controlBackground
        border.width: button.kind === Button.Plain ? 1 : 0
        border.color: Theme.line
        opacity: button.kind === Button.Prominent && (button.hovered || button.down) ? 0.88 : 1
        FocusRing { shown: button.visualFocus }
    }

    // A button that has the focus is pressed by Return too, as by the space bar.
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Tip {
        shown: button.hovered && button.hint !== ""
        text: button.hint
    }
}
