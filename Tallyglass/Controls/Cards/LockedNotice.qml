import QtQuick
import Tallyglass.Controls

// Replaces what can't be shown without Full Disk Access, and leads to the guide.
EmptyState {
    id: notice
    required property string heading
    required property string text
    signal guideRequested

    title: heading
    systemImage: "lock.fill"
    description: text

    Button {
        highlighted: true
        text: qsTr("Show me how")
        systemImage: "sparkles"
        onClicked: notice.guideRequested()
    }
}
