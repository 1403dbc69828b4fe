pragma Singleton

import QtQuick

QtObject {
    readonly property color accent: "#1f3fa8"
}
