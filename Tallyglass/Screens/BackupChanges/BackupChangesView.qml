import QtQuick
import QtQuick.Layouts
import Tallyglass.BackupChanges
import Tallyglass.Context
import Tallyglass.Controls

// What changed in one backup, over nearly all of the window.
SheetFrame {
    id: sheet
    required property ScreenContext context
    readonly property alias viewModel: changesViewModel
    property var target // of the timeline; the newest backup without one

    title: qsTr("Changes in this backup")
    preferredWidth: Number.POSITIVE_INFINITY
    implicitHeight: Number.POSITIVE_INFINITY
    onAboutToHide: changesViewModel.close()

    /// Gives the keyboard to the content, or in it to the first that can take it.
    function takeKeyboard() {
        area.item.forceActiveFocus(Qt.OtherFocusReason);
        if (area.Window.activeFocusItem === area.item)
            area.item.nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason);
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
                // What had the keyboard may have gone with the former content.
                onLoaded: if (sheet.opened && !done.activeFocus) sheet.takeKeyboard()
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
