import QtQuick
import Tallyglass

// Shows what the program has to ask or to tell, one after the other.
Item {
    id: host
    required property Alerts alerts

    AlertSheet {
        id: sheet
        property alert content
        property bool asked: false

        title: content.title
        text: content.text
        systemImage: content.symbol
        symbolColor: content.isWarning ? Theme.warning : Theme.accent
        confirmText: content.confirmText
        cancelText: content.cancelText
        onAnswered: confirmed => {
            if (!asked)
                return;
            asked = false;
            host.alerts.answer(confirmed);
        }
    }
    Connections {
        target: host.alerts
        function onCurrentChanged() { Qt.callLater(host.showNext); } // the one before is still closing
    }
    Component.onCompleted: showNext()

    function showNext() {
        if (!alerts.isShowing || sheet.asked)
            return;
        sheet.content = alerts.current;
        sheet.asked = true;
        sheet.open();
    }
}
