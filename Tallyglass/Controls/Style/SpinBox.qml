import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A whole number that goes up and down in steps of one: words that hold it, and two buttons. The up and down
// keys step too. A step of the user is told by `stepped`.
Item {
    id: stepper
    required property string text // such as "Depth: 3"
    property int value: 0
    property int from: 0
    property int to: 10
    signal stepped(int value)

    readonly property bool visualFocus: activeFocus && !byPointer
    property bool byPointer: false

    function step(by: int) {
        const target = Math.max(from, Math.min(to, value + by));
        if (enabled && target !== value)
            stepped(target);
    }

    implicitWidth: words.implicitWidth + Theme.unit + buttons.width
    implicitHeight: Theme.controlHeight
    opacity: enabled ? 1 : 0.5
    activeFocusOnTab: true
    Accessible.role: Accessible.SpinBox
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    onActiveFocusChanged: if (!activeFocus) byPointer = false
    Keys.onUpPressed: press(1)
    Keys.onDownPressed: press(-1)
    Keys.onRightPressed: press(1)
    Keys.onLeftPressed: press(-1)

    function press(by: int) {
        byPointer = false;
        step(by);
    }

    Label {
        id: words
        anchors { left: parent.left; right: buttons.left; rightMargin: Theme.unit; verticalCenter: parent.verticalCenter }
        text: stepper.text
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Rectangle {
        id: buttons
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        width: row.width + 2
        height: parent.height
        radius: Theme.controlRadius
        color: Theme.controlBackground
        border.color: Theme.line
        FocusRing { shown: stepper.visualFocus }

        Row {
            id: row
            x: 1
            y: 1
            Repeater {
                model: [{ symbol: "minus", by: -1 }, { symbol: "plus", by: 1 }]
                T.AbstractButton {
                    id: half
                    required property var modelData
                    readonly property bool possible: stepper.enabled && (modelData.by < 0 ? stepper.value > stepper.from : stepper.value < stepper.to)

                    width: Math.max(Theme.controlHeight, Theme.unit * 4)
                    height: buttons.height - 2
                    focusPolicy: Qt.NoFocus
                    hoverEnabled: true
                    autoRepeat: true
                    Accessible.ignored: true
                    onClicked: {
                        stepper.byPointer = true;
                        stepper.forceActiveFocus(Qt.MouseFocusReason);
                        stepper.step(modelData.by);
                    }

                    contentItem: Item {
                        Symbol {
                            anchors.centerIn: parent
                            name: half.modelData.symbol
                            color: Theme.text
                            opacity: half.possible ? 1 : 0.35
                        }
                    }
                    background: Rectangle {
                        radius: Theme.controlRadius - 1
                        color: half.possible && (half.hovered || half.down) ? Theme.hoverBackground : "transparent"
                    }
                }
            }
        }
        Rectangle {
            anchors.centerIn: parent
            width: 1
            height: parent.height - Theme.unit
            color: Theme.line
        }
    }
}
