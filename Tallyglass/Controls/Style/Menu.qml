import QtQuick
import QtQuick.Templates as T
import Tallyglass.Controls

// A menu, opened at a point or below its button. When it closes, the item that had the keyboard focus gets it back,
// unless the chosen command moved it.
T.Menu {
    id: menu
    property Item previousFocusItem: null
    property Item windowContent: null
    // A screen reader meets the item that the menu puts around its content.
    readonly property Binding accessibleName: Binding {
        target: menu.contentItem?.parent?.Accessible ?? null
        property: "name"
        value: menu.title
    }

    /// Opens it below `anchor`, their right edges in line.
    function openBelow(anchor: Item) {
        popup(anchor, anchor.width - width, anchor.height + Theme.unit / 2);
    }

    onAboutToShow: {
        windowContent = parent.Window.contentItem;
        previousFocusItem = parent.Window.activeFocusItem;
    }
    onClosed: {
        if (previousFocusItem && windowContent.Window.activeFocusItem === windowContent)
            previousFocusItem.forceActiveFocus(Qt.PopupFocusReason);
        previousFocusItem = null;
    }

    margins: Theme.unit
    padding: Theme.unit / 2
    overlap: 0
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.animationDuration / 2 }
    }
    contentItem: ListView {
        implicitWidth: Theme.unit * 4 + Theme.bodySize * 18
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: Window.window ? contentHeight > Window.window.height : false
        currentIndex: menu.currentIndex
        clip: true
    }
    background: Rectangle {
        color: Theme.cardBackground
        radius: Theme.controlRadius + 2
        border.color: Theme.line
    }
}
