import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A modal card over the dimmed window, with any content. Escape closes it; Tab stays within it; the item that had the
// keyboard focus before gets it back.
T.Popup {
    id: sheet
    property string title
    property real preferredWidth: Theme.unit * 64

    property Item previousFocusItem: null
    // To a screen reader, the item that the popup puts around its content is the dialog.
    readonly property Binding accessibleName: Binding {
        target: sheet.contentItem?.parent?.Accessible ?? null
        property: "name"
        value: sheet.title
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(preferredWidth * Math.max(1, Theme.textScale * 0.8), parent.width - Theme.unit * 6) : 0
    height: parent ? Math.min(implicitHeight, parent.height - Theme.unit * 6) : 0
    implicitHeight: contentItem.implicitHeight
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    onAboutToShow: previousFocusItem = parent?.Window.activeFocusItem ?? null
    onOpened: {
        if (!contentItem.activeFocus)
            contentItem.forceActiveFocus(Qt.TabFocusReason);
        if (parent.Window.activeFocusItem === contentItem) // no item in it asks for the focus
            contentItem.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
    }
    onClosed: {
        if (previousFocusItem)
            previousFocusItem.forceActiveFocus(Qt.PopupFocusReason);
        previousFocusItem = null;
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.animationDuration }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.animationDuration }
    }
    T.Overlay.modal: Rectangle {
        color: Theme.scrim
        Behavior on opacity { NumberAnimation { duration: Theme.animationDuration } }
    }
    background: Rectangle {
        color: Theme.windowBackground
        radius: Theme.radius
        border.color: Theme.line
        Rectangle { // the shadow
            anchors.fill: parent
            anchors.margins: -1
            anchors.topMargin: 2
            anchors.bottomMargin: -4
            z: -1
            radius: parent.radius + 2
            color: Theme.shadow
        }
    }
}
