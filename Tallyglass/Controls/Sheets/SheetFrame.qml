import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A modal card over the dimmed window, for a content of any kind. Escape closes it; Tab stays within it; what had
// the keyboard before gets it back.
T.Popup {
    id: sheet
    property string title
    property real preferredWidth: Theme.unit * 64

    property Item formerFocus: null
    // The item that the popup makes around its content is the dialog to a screen reader.
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

    onAboutToShow: formerFocus = parent?.Window.activeFocusItem ?? null
    onOpened: {
        if (!contentItem.activeFocus)
            contentItem.forceActiveFocus(Qt.TabFocusReason);
        if (parent.Window.activeFocusItem === contentItem) // nothing in it asks for the keyboard first
            contentItem.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
    }
    onClosed: {
        if (formerFocus)
            formerFocus.forceActiveFocus(Qt.PopupFocusReason);
        formerFocus = null;
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
        Rectangle { // a soft edge below
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
