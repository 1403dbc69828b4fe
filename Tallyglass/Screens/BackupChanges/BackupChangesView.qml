import QtQuick
import QtQuick.Layouts
import Tallyglass.BackupChanges
import Tallyglass.Context
import Tallyglass.Controls

// The sheet of one backup's changes, over nearly the whole window.
SheetFrame {
    id: sheet
    required property ScreenContext context
    readonly property alias viewModel: changesViewModel
    property var target // of the timeline; the newest backup without one

    title: qsTr("Changes in this backup")
    preferredWidth: Infinity
    implicitHeight: Infinity
    onAboutToHide: changesViewModel.close()

    /// Moves the keyboard focus to the content, or to the first item in it that takes the focus.
    function takeFocus() {
        const content = area.item as Item;
        content.forceActiveFocus(Qt.OtherFocusReason);
        if (area.Window.activeFocusItem === content)
            content.nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason);
    }

    BackupChangesViewModel {
        id: changesViewModel
        context: sheet.context
        target: sheet.target
    }

    contentItem: FocusScope {
        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            RowLayout {
                Layout.fillWidth: true
                Layout.margins: Theme.unit * 2
                Layout.leftMargin: Theme.unit * 3
                spacing: Theme.unit * 2
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: Theme.unit / 4
                    Title {
                        Layout.fillWidth: true
                        text: sheet.title
                    }
                    Label {
                        Layout.fillWidth: true
                        text: changesViewModel.content.subtitle
                        color: Theme.secondaryText
                    }
                }
                Button {
                    id: done
                    Layout.alignment: Qt.AlignTop
                    text: qsTr("Done")
                    onClicked: sheet.close()
                }
            }
            Divider { Layout.fillWidth: true }
            Loader {
                id: area
                Layout.fillWidth: true
                Layout.fillHeight: true
                focus: true
                sourceComponent: changesViewModel.content.isLocked ? locked
                               : changesViewModel.content.isRunning ? running
                               : changesViewModel.content.hasResults ? results : message
                // The item that had the focus may have gone with the previous content.
                onLoaded: if (sheet.opened && !done.activeFocus) sheet.takeFocus()
            }
        }
    }

    Component {
        id: locked
        CentredPage {
            focus: true
            LockedNotice {
                width: parent.width
                heading: qsTr("Seeing file changes needs Full Disk Access")
                text: qsTr("tmutil cannot read backup contents without it.")
                onGuideRequested: sheet.context.openSheet(ScreenContext.AppAccessGuide)
            }
        }
    }
    Component {
        id: message
        CentredPage {
            focus: true
            EmptyState {
                width: parent.width
                systemImage: changesViewModel.content.messageSymbol
                description: changesViewModel.content.message
            }
        }
    }
    Component {
        id: running
        CentredPage {
            focus: true
            BackupChangesProgress {
                width: parent.width
                content: changesViewModel.content
                onCancelRequested: sheet.close()
            }
        }
    }
    Component {
        id: results
        BackupChangesResults {
            focus: true
            context: sheet.context
            viewModel: sheet.viewModel
        }
    }
}
