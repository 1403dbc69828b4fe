import QtQuick
import Tallyglass.Context

// Shows the dialogs in which the user chooses files, one after the other. They are loaded with the first request; a
// panel whose dialog can't be created fails with the reason.
Item {
    id: host
    required property FilePanels panels

    property Item dialog: null

    Connections {
        target: host.dialog
        function onAnswered(urls) { host.panels.answer(urls); }
        function onFailed(reason) { host.panels.fail(reason); }
    }
    Connections {
        target: host.panels
        function onCurrentChanged() {
            // Later, since the previous one is still closing.
            Qt.callLater(host.showNext); // qmllint disable type
        }
    }
    Component.onCompleted: showNext()

    function showNext() {
        dialog?.destroy();
        dialog = null;
        if (!panels.isShowing)
            return;
        const component = Qt.createComponent("FilePanelDialog.qml");
        if (component.status === Component.Ready)
            dialog = component.createObject(host, { panel: panels.current });
        if (dialog)
            dialog.open();
        else
            panels.fail(component.errorString());
    }
}
