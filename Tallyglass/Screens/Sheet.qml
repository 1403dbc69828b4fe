import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass

// A modal card over the dimmed window. Escape closes it; Tab stays within it; what had the keyboard before gets
// it back. Children stand in a column that scrolls when the window is too low; `footer` stays below them.
T.Popup {
    id: sheet
    property string title
    property real preferredWidth: Theme.unit * 64
    default property alias items: page.items
    property alias footer: buttons.data

    property Item formerFocus: null

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
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.motion }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.motion }
    }
    T.Overlay.modal: Rectangle {
        color: Theme.scrim
        Behavior on opacity { NumberAnimation { duration: Theme.motion } }
    }
    background: Rectangle {
        color: Theme.windowGround
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
    contentItem: FocusScope {
        implicitHeight: page.implicitHeight + (footerArea.visible ? footerArea.implicitHeight : 0)
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        ColumnLayout {
            anchors.fill: parent
            spacing: 0
            ScrollPage {
                id: page
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            ColumnLayout {
                id: footerArea
                visible: buttons.children.length > 0
                spacing: 0
                Divider {}
                RowLayout {
                    id: buttons
                    Layout.fillWidth: true
                    Layout.margins: Theme.unit * 2
                    Layout.leftMargin: page.margin
                    Layout.rightMargin: page.margin
                    spacing: Theme.unit
                    layoutDirection: Qt.LeftToRight
                }
            }
        }
    }
}
