import QtQuick
import Tallyglass.Context

// Shows the panels in which the user chooses files, one after the other. The desktop's dialogs are loaded only
// when the first is asked for; a panel whose dialog can't be made is declined with the reason.
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
        function onCurrentChanged() { Qt.callLater(host.showNext); } // the one before is still closing
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
