import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// The buttons that start a job, and in their place, while it runs, what it does, for how long, and how to stop it. The
// keyboard focus stays with whichever is there.
Item {
    id: job
    required property bool running
    required property string progress
    property string elapsed // such as "1:15"; empty if nobody counts
    default property alias buttons: flow.data
    signal cancelRequested

    property bool showsProgress: false // follows `running` once it is known who has the focus

    implicitHeight: Math.max(starters.implicitHeight, current.implicitHeight)

    onRunningChanged: {
        const visibly = (Window.activeFocusItem as Button)?.visualFocus ?? false;
        const reason = visibly ? Qt.TabFocusReason : Qt.OtherFocusReason;
        const hadFocus = starters.activeFocus || current.activeFocus;
        showsProgress = running;
        if (hadFocus)
            (running ? current : starters).forceActiveFocus(reason);
    }
    Component.onCompleted: showsProgress = running

    FocusScope {
        id: starters
        width: parent.width
        implicitHeight: flow.height
        visible: !job.showsProgress
        Flow {
            id: flow
            width: parent.width
            spacing: Theme.unit
        }
    }
    Loader {
        id: current
        width: parent.width
        active: job.showsProgress
        visible: active
        sourceComponent: RowLayout {
            spacing: Theme.unit
            BusyIndicator {}
            Label {
                Layout.fillWidth: true
                text: job.progress
            }
            Caption {
                visible: text !== ""
                text: job.elapsed
                wrapMode: Text.NoWrap
                Accessible.name: qsTr("Running for %1").arg(text)
            }
            Button {
                text: qsTr("Cancel")
                focus: true
                onClicked: job.cancelRequested()
            }
        }
    }
}
