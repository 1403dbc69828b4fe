import QtQuick
import Tallyglass.Controls

// Text that can be selected and copied, such as a path. Wraps anywhere, since paths have few spaces.
TextEdit {
    id: edit
    color: Theme.text
    font.pixelSize: Theme.bodySize
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
    readOnly: true
    selectByMouse: true
    activeFocusOnTab: true
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    onActiveFocusChanged: if (!activeFocus) deselect()
    FocusRing { visible: edit.activeFocus }
}
