import QtQuick
import QtQuick.Layouts
import Tallyglass

// The sections, one below the other. One stop for Tab; up, down, Home and End move between them.
Item {
    id: sidebar
    required property ShellView shell
    readonly property alias hasKeyboard: rows.activeFocus

    function move(index: int) {
        shell.sectionIndex = Math.max(0, Math.min(shell.sections.length - 1, index));
    }

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Sidebar")

    Column {
        id: rows
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.unit; topMargin: Theme.unit * 1.5 }
        spacing: Theme.unit / 4
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Sections")

        Keys.onUpPressed: sidebar.move(sidebar.shell.sectionIndex - 1)
        Keys.onDownPressed: sidebar.move(sidebar.shell.sectionIndex + 1)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home)
                sidebar.move(0);
            else if (event.key === Qt.Key_End)
                sidebar.move(sidebar.shell.sections.length - 1);
            else
                return;
            event.accepted = true;
        }

        Repeater {
            model: sidebar.shell.sections
            SidebarRow {
                required property section modelData
                required property int index

                width: rows.width
                text: modelData.title
                systemImage: modelData.symbol
                current: index === sidebar.shell.sectionIndex
                focused: current && rows.activeFocus
                onClicked: {
                    rows.forceActiveFocus(Qt.MouseFocusReason);
                    sidebar.move(index);
                }
            }
        }
    }
    RowLayout {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.unit * 2 }
        visible: sidebar.shell.content.liteMode
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
