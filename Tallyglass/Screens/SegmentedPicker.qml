import QtQuick
import QtQuick.Templates as T
import Tallyglass

// Picks one of a few options that stand side by side; `title` names what is picked. One stop for Tab; the arrows,
// Home and End move.
T.GroupBox {
    id: picker
    property var options: []
    property int currentIndex: 0
    signal picked(int index)

    function move(index: int) {
        const target = Math.max(0, Math.min(options.length - 1, index));
        if (target !== currentIndex)
            picked(target);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 2
    Accessible.name: title
    focusPolicy: Qt.StrongFocus

    Keys.onLeftPressed: move(currentIndex - 1)
    Keys.onRightPressed: move(currentIndex + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            move(0);
        else if (event.key === Qt.Key_End)
            move(options.length - 1);
        else
            return;
        event.accepted = true;
    }

    contentItem: Row {
        Repeater {
            model: picker.options
            T.RadioButton {
                id: segment
                required property int index
                required property string modelData
                readonly property bool current: index === picker.currentIndex

                text: modelData
                checked: current
                focusPolicy: Qt.NoFocus
                hoverEnabled: true
                implicitWidth: words.implicitWidth + Theme.unit * 3
                implicitHeight: Theme.controlHeight - 4
                Accessible.name: text
                Accessible.onPressAction: picker.move(index)
                onClicked: {
                    checked = Qt.binding(() => segment.current); // the picker decides
                    picker.forceActiveFocus(Qt.MouseFocusReason);
                    picker.move(index);
                }

                contentItem: TextLabel {
                    id: words
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
                    color: segment.current ? Theme.cardGround : "transparent"
                    border.width: segment.current ? 1 : 0
                    border.color: Theme.line
                }
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: segmentHover.hovered ? Theme.hoverGround : Theme.controlGround
        HoverHandler { id: segmentHover }
        FocusRing { shown: picker.visualFocus }
    }
}
