import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.Shell

// The list of sections. One stop for Tab; Up, Down, Home and End move between them.
Item {
    id: sidebar
    required property ShellViewModel viewModel
    required property var sections
    required property int sectionIndex
    signal activated(int index)
    readonly property alias hasFocus: rows.activeFocus

    function move(index: int) {
        activated(Math.max(0, Math.min(sections.length - 1, index)));
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

        Keys.onUpPressed: sidebar.move(sidebar.sectionIndex - 1)
        Keys.onDownPressed: sidebar.move(sidebar.sectionIndex + 1)
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
                required property Section modelData
                required property int index

                width: rows.width
                text: modelData.title
                systemImage: modelData.systemImage
                highlighted: index === sidebar.sectionIndex
                focused: highlighted && rows.activeFocus
                onClicked: {
                    rows.forceActiveFocus(Qt.MouseFocusReason);
                    sidebar.move(index);
                }
            }
        }
    }
    RowLayout {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.unit * 2 }
        visible: sidebar.viewModel.content.liteMode
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
