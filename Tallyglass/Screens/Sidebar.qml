import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tallyglass

// The sections, one below the other. One stop for Tab; up, down, Home and End move between them.
T.Pane {
    id: sidebar
    required property var sections
    required property int currentIndex
    property bool liteMode: false
    signal picked(int index)

    function move(index: int) {
        const target = Math.max(0, Math.min(sections.length - 1, index));
        if (target !== currentIndex)
            picked(target);
    }

    padding: Theme.unit
    topPadding: Theme.unit * 1.5
    background: Rectangle { color: Theme.sidebarGround }

    contentItem: ColumnLayout {
        spacing: Theme.unit / 2

        FocusScope {
            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitHeight: rows.implicitHeight

            Column {
                id: rows
                anchors { left: parent.left; right: parent.right }
                spacing: Theme.unit / 4
                focus: true
                activeFocusOnTab: true
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Sections")

                Keys.onUpPressed: sidebar.move(sidebar.currentIndex - 1)
                Keys.onDownPressed: sidebar.move(sidebar.currentIndex + 1)
                Keys.onPressed: event => {
                    if (event.key === Qt.Key_Home)
                        sidebar.move(0);
                    else if (event.key === Qt.Key_End)
                        sidebar.move(sidebar.sections.length - 1);
                    else
                        return;
                    event.accepted = true;
                }

                Repeater {
                    model: sidebar.sections
                    SidebarRow {
                        required property section modelData
                        required property int index

                        width: rows.width
                        title: modelData.title
                        systemImage: modelData.symbol
                        current: index === sidebar.currentIndex
                        focused: current && rows.activeFocus
                        onClicked: sidebar.picked(index)
                    }
                }
            }
        }
        RowLayout {
            Layout.margins: Theme.unit
            visible: sidebar.liteMode
            spacing: Theme.unit * 0.75
            Symbol {
                name: "lock.fill"
                color: Theme.secondaryText
            }
            Caption {
                Layout.fillWidth: true
                text: qsTr("Lite mode")
            }
        }
    }
}
