import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass.Controls

// A push button. `highlighted` marks the main action; a `flat` one has no frame. A button without text needs a
// `hint`, which names it.
T.Button {
    id: button
    property string systemImage
    property string hint

    readonly property color textColor: highlighted ? Theme.onAccent : Theme.text

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
                color: button.highlighted || button.flat ? button.textColor : Theme.accent
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: button.text
                color: button.textColor
                font.weight: button.highlighted ? Font.DemiBold : Font.Normal
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: button.highlighted ? Theme.accent
             : button.hovered || button.down ? Theme.hoverBackground
             : button.flat ? "transparent" : Theme.controlBackground
        border.width: button.highlighted || button.flat ? 0 : 1
        border.color: Theme.line
        opacity: button.highlighted && (button.hovered || button.down) ? 0.88 : 1
        FocusRing { visible: button.visualFocus }
    }

    // The focused button is pressed by Return too, as by the space bar.
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    LazyToolTip {
        active: button.hovered && button.hint !== ""
        text: button.hint
    }
}
