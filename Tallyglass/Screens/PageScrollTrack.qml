import QtQuick
import QtQuick.Templates // by its own name, since an attached object is found by no other in an assignment
import Tallyglass

// The scroll track of a page, which it joins by itself.
ScrollTrack {
    required property Flickable page
    Component.onCompleted: {
        parent = page; // stands still beside what scrolls
        page.ScrollBar.vertical = this;
    }
}
