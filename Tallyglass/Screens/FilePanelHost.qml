import QtQuick
import Tallyglass

// Shows the panels in which the user chooses files, one after the other. The desktop's dialogs are loaded only
// when the first is asked for; a panel whose dialog can't be made is declined with the reason.
Item {
    id: host
    required property FilePanels panels
    property url file: "FilePanelDialog.qml" // makes the dialog of a panel

    Loader { id: loader }
    Connections {
        target: loader.item
        function onAnswered(urls) { host.panels.answer(urls); }
        function onFailed(reason) { host.panels.fail(reason); }
    }
    Connections {
        target: host.panels
        function onCurrentChanged() { Qt.callLater(host.showNext); } // the one before is still closing
    }
    Component.onCompleted: showNext()

    function showNext() {
        loader.source = "";
        if (!panels.isShowing)
            return;
        const component = Qt.createComponent(file);
        if (component.status !== Component.Ready) {
            panels.fail(component.errorString());
            return;
        }
        loader.setSource(file, { panel: panels.current });
        loader.item.open();
    }
}
