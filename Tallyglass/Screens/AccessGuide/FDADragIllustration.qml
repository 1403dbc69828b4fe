import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls

// A sketch of the list in System Settings, and beside it the item to drag there, which can really be dragged.
Item {
    id: illustration
    required property string itemName
    required property url itemUrl
    property string itemSymbol: "terminal.fill"
    property string description

    readonly property bool stacked: width < Theme.unit * 52 * Theme.textScale

    Layout.fillWidth: true
    implicitWidth: Theme.unit * 56
    implicitHeight: grid.implicitHeight
    Accessible.role: Accessible.Graphic
    Accessible.name: description

    component SketchLabel: Label { Accessible.ignored: true }
    component SwitchSketch: Rectangle {
        property bool on: true
        implicitWidth: height * 1.75
        implicitHeight: Theme.bodySize * 1.3
        radius: height / 2
        color: on ? Theme.healthy : Theme.track
        Rectangle {
            x: parent.on ? parent.width - width - 2 : 2
            y: 2
            width: height
            height: parent.height - 4
            radius: height / 2
            color: Theme.cardBackground
        }
    }
    component ListRow: RowLayout {
        property string name
        property string systemImage
        property bool on: true
        Layout.fillWidth: true
        Layout.leftMargin: Theme.unit * 1.5
        Layout.rightMargin: Theme.unit * 1.5
        spacing: Theme.unit
        Symbol {
            name: parent.systemImage
            color: Theme.secondaryText
        }
        SketchLabel {
            Layout.fillWidth: true
            text: parent.name
        }
        SwitchSketch { on: parent.on }
    }

    GridLayout {
        id: grid
        width: parent.width
        columns: illustration.stacked ? 1 : 3
        columnSpacing: Theme.unit * 2
        rowSpacing: Theme.unit * 1.5

        Rectangle { // the item
            id: tile
            Layout.alignment: Qt.AlignHCenter | Qt.AlignVCenter
            implicitWidth: Math.max(Theme.unit * 14 * Theme.textScale, tileColumn.implicitWidth + Theme.unit * 3)
            implicitHeight: tileColumn.implicitHeight + Theme.unit * 3
            radius: Theme.radius
            color: dragHandler.active || tileHover.hovered ? Theme.selectedBackground : Theme.cardBackground
            border.width: 2
            border.color: Theme.accent

            readonly property var dragged: ({ "text/uri-list": `${illustration.itemUrl}\r\n` })

            objectName: "dragSource"
            Drag.dragType: Drag.Automatic
            Drag.supportedActions: Qt.CopyAction
            Drag.mimeData: dragged

            HoverHandler {
                id: tileHover
                cursorShape: dragHandler.active ? Qt.ClosedHandCursor : Qt.OpenHandCursor
                onHoveredChanged: {
                    if (hovered)
                        tile.grabToImage(image => tile.Drag.imageSource = image.url);
                }
            }
            DragHandler {
                id: dragHandler
                target: null
                onActiveChanged: tile.Drag.active = active
            }
            ColumnLayout {
                id: tileColumn
                anchors.centerIn: parent
                spacing: Theme.unit / 2
                Symbol {
                    Layout.alignment: Qt.AlignHCenter
                    name: illustration.itemSymbol
                    color: Theme.accent
                    size: Theme.displaySize * 1.5
                }
                SketchLabel {
                    Layout.alignment: Qt.AlignHCenter
                    text: illustration.itemName
                    font.weight: Font.DemiBold
                    wrapMode: Text.NoWrap
                }
            }
        }
        ColumnLayout {
            Layout.alignment: Qt.AlignVCenter
            Layout.fillWidth: illustration.stacked
            Layout.maximumWidth: illustration.stacked ? Infinity : Theme.unit * 14 * Theme.textScale
            spacing: Theme.unit / 2
            SketchLabel {
                Layout.fillWidth: true
                text: qsTr("Drag this into the Full Disk Access list")
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
                horizontalAlignment: Text.AlignHCenter
            }
            Symbol {
                Layout.alignment: Qt.AlignHCenter
                name: "arrowtriangle.right.fill"
                color: Theme.accent
                size: Theme.displaySize
                rotation: illustration.stacked ? 90 : 0
            }
        }
        Rectangle { // the list
            Layout.fillWidth: true
            Layout.minimumWidth: Theme.unit * 24
            implicitHeight: list.implicitHeight + Theme.unit * 2
            radius: Theme.radius
            color: Theme.cardBackground
            border.color: Theme.line

            ColumnLayout {
                id: list
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
                spacing: Theme.unit
                SketchLabel {
                    Layout.fillWidth: true
                    Layout.leftMargin: Theme.unit * 1.5
                    Layout.rightMargin: Theme.unit * 1.5
                    text: qsTr("Full Disk Access")
                    font.weight: Font.DemiBold
                }
                Divider { Layout.fillWidth: true }
                ListRow {
                    name: qsTr("Terminal")
                    systemImage: "terminal.fill"
                }
                Divider { Layout.fillWidth: true }
                ListRow {
                    name: qsTr("Backups")
                    systemImage: "externaldrive.fill"
                    on: false
                }
                Divider { Layout.fillWidth: true }
                Symbol {
                    Layout.leftMargin: Theme.unit * 1.5
                    name: "minus"
                    color: Theme.secondaryText
                }
            }
        }
    }
}
