import QtQuick
import Tallyglass

// What went wrong, for as long as it lasts.
Reveal {
    id: reveal
    required property string error

    shown: error !== ""
    Lazy {
        width: parent.width
        shown: reveal.progress > 0
        sourceComponent: ErrorBanner { text: reveal.error }
    }
}
