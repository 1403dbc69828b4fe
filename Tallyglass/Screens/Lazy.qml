import QtQuick

// Makes what it holds when it is first to be shown and drops it when it isn't any more: what is never shown costs
// nothing.
Loader {
    property bool shown: true

    active: shown
    visible: shown
}
