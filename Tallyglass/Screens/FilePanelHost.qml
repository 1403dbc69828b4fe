import QtQuick
import Tallyglass

// Shows the panels in which the user chooses files, one after the other. The desktop's dialogs are loaded only
// when the first is asked for.
Item {
    id: host
    required property FilePanels panels

    Loader { id: loader }
    Connections {
        target: loader.item
        function onAnswered(urls) { host.panels.answer(urls); }
    }
    Connections {
        target: host.panels
        function onCurrentChanged() { Qt.callLater(host.showNext); } // the one before is still closing
    }
    Component.onCompleted: showNext()

    function showNext() {
        loader.source = "";
        if (panels.isShowing)
            loader.setSource("FilePanelDialog.qml", { panel: panels.current });
    }
}
