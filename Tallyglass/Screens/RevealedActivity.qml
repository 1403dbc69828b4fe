import QtQuick
import Tallyglass

// The running backup, for as long as it runs.
Reveal {
    id: reveal
    required property bool running
    required property activityCardContent content

    shown: running
    Lazy {
        width: parent.width
        shown: reveal.progress > 0
        sourceComponent: ActivityCard { content: reveal.content }
    }
}
