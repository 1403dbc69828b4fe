import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// Radio buttons in one frame, side by side, or in lines where it is too narrow. One stop for Tab; the arrows, Home and
// End move. `activated` asks for another `currentIndex`, which stays what it is bound to.
Item {
    id: picker
    property string label
    property var model: []
    property int currentIndex: 0
    signal activated(int index)

    property bool focusedByPointer: false

    function pick(index: int) {
        const target = Math.max(0, Math.min(model.length - 1, index));
        if (target !== currentIndex)
            activated(target);
    }

    implicitWidth: segments.naturalWidth + 4
    implicitHeight: segments.implicitHeight + 4
    activeFocusOnTab: true
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Accessible.description: model[currentIndex] ?? ""

    onActiveFocusChanged: if (!activeFocus) focusedByPointer = false
    Keys.onLeftPressed: pick(currentIndex - 1)
    Keys.onRightPressed: pick(currentIndex + 1)
    Keys.onPressed: event => {
        focusedByPointer = false;
        if (event.key === Qt.Key_Home)
            pick(0);
        else if (event.key === Qt.Key_End)
            pick(model.length - 1);
        else
            return;
        event.accepted = true;
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: hover.hovered ? Theme.hoverBackground : Theme.controlBackground
    }
    HoverHandler { id: hover }
    FocusRing { visible: picker.activeFocus && !picker.focusedByPointer }

    Flow {
        id: segments
        readonly property real naturalWidth: {
            let sum = 0;
            for (let index = 0; index < children.length; ++index)
                sum += children[index].implicitWidth;
            return sum;
        }
        x: 2
        y: 2
        width: picker.width - 4
        Repeater {
            model: picker.model
            T.RadioButton {
                id: segment
                required property int index
                required property string modelData
                readonly property bool current: index === picker.currentIndex

                text: modelData
                checked: current
                focusPolicy: Qt.NoFocus
                hoverEnabled: true
                implicitWidth: widestText.implicitWidth + Theme.unit * 3
                implicitHeight: Theme.controlHeight - 4
                Accessible.name: text
                Accessible.focused: current && picker.activeFocus
                Accessible.onPressAction: picker.pick(index)
                onClicked: {
                    checked = Qt.binding(() => segment.current);
                    picker.focusedByPointer = true;
                    picker.forceActiveFocus(Qt.MouseFocusReason);
                    picker.pick(index);
                }

                contentItem: Label {
                    text: segment.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    wrapMode: Text.NoWrap
                    color: segment.current ? Theme.text : Theme.secondaryText
                    font.weight: segment.current ? Font.DemiBold : Font.Normal
                    Accessible.ignored: true
                }
                background: Rectangle {
                    radius: Theme.controlRadius - 2
                    color: segment.current ? Theme.cardBackground : "transparent"
                    border.width: segment.current ? 1 : 0
                    border.color: Theme.line
                }
                Label { // as wide as when it is picked, so that nothing moves
                    id: widestText
                    visible: false
                    text: segment.text
                    wrapMode: Text.NoWrap
                    font.weight: Font.DemiBold
                }
            }
        }
    }
}
