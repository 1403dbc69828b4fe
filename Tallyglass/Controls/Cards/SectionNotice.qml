import QtQuick
import Tallyglass.Controls

// Stands where a section's screen isn't built yet.
Item {
    property alias text: notice.title
    property alias systemImage: notice.systemImage

    EmptyState {
        id: notice
        anchors.fill: parent
    }
}
