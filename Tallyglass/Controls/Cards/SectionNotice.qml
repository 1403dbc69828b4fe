import QtQuick
import Tallyglass.Controls

// The placeholder for a section's screen that isn't built yet.
Item {
    property alias text: notice.title
    property alias systemImage: notice.systemImage

    EmptyState {
        id: notice
        anchors.fill: parent
    }
}
