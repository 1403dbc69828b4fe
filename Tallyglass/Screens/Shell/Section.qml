import QtQml

// One of the places of the sidebar, and the screen that is shown there.
QtObject {
    required property string name // for pictures; never translated
    required property string title
    required property string systemImage
    required property Component screen
}
