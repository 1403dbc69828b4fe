import QtQuick
import Tallyglass.Context
import Tallyglass.Controls

// Shows the alerts of the program, one after the other. An alert that is answered elsewhere closes.
Loader {
    id: host
    required property Alerts alerts

    active: false
    sourceComponent: AlertSheet {
        property alert content
        property bool awaitsAnswer: false

        title: content.title
        text: content.text
        systemImage: content.symbol
        symbolColor: content.isWarning ? Theme.warning : Theme.accent
        confirmText: content.confirmText
        cancelText: content.cancelText
        onAnswered: confirmed => {
            if (!awaitsAnswer)
                return;
            awaitsAnswer = false;
            host.alerts.answer(confirmed);
        }
    }
    Connections {
        target: host.alerts
        function onCurrentChanged() {
            // Later, since the previous one may still be closing.
            Qt.callLater(host.showCurrent); // qmllint disable type
        }
    }
    Component.onCompleted: showCurrent()

    function showCurrent() {
        active = active || alerts.isShowing;
        if (!active)
            return;
        if (!alerts.isShowing) {
            item.awaitsAnswer = false;
            item.close();
            return;
        }
        item.content = alerts.current;
        item.awaitsAnswer = true;
        item.open();
    }
}
