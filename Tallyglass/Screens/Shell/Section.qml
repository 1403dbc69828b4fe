import QtQml

// A section of the sidebar and its screen.
QtObject {
    required property string name // for pictures; never translated
    required property string title
    required property string systemImage
    required property Component screen
}
