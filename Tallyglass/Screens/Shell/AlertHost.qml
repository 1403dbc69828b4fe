import QtQuick
import Tallyglass.Context
import Tallyglass.Controls

// Shows what the program has to ask or to tell, one after the other. Answered elsewhere, an alert goes too.
Loader {
    id: host
    required property Alerts alerts

    active: false
    sourceComponent: AlertSheet {
        property alert content
        property bool asks: false

        title: content.title
        text: content.text
        systemImage: content.symbol
        symbolColor: content.isWarning ? Theme.warning : Theme.accent
        confirmText: content.confirmText
        cancelText: content.cancelText
        onAnswered: confirmed => {
            if (!asks)
                return;
            asks = false;
            host.alerts.answer(confirmed);
        }
    }
    Connections {
        target: host.alerts
        function onCurrentChanged() { Qt.callLater(host.showCurrent); } // the one before may still be closing
    }
    Component.onCompleted: showCurrent()

    function showCurrent() {
        active = active || alerts.isShowing;
        if (!active)
            return;
        if (!alerts.isShowing) {
            item.asks = false;
            item.close();
            return;
        }
        item.content = alerts.current;
        item.asks = true;
        item.open();
    }
}
