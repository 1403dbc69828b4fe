import QtQuick
import QtQuick.Templates as T

// The scroll track of a page, which it joins by itself.
ScrollTrack {
    required property Flickable page
    Component.onCompleted: page.T.ScrollBar.vertical = this
}
