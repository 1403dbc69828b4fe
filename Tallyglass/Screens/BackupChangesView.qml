import QtQuick
import QtQuick.Layouts
import Tallyglass

// What changed in one backup, over nearly all of the window.
SheetFrame {
    id: sheet
    required property AppModel model
    required property HelperSetup helperSetup
    required property Pasteboard pasteboard
    readonly property alias changes: changesState
    property var target // of the timeline; the newest backup without one

    title: qsTr("Changes in this backup")
    preferredWidth: Number.POSITIVE_INFINITY
    implicitHeight: Number.POSITIVE_INFINITY
    onAboutToHide: changesState.close()

    /// Gives the keyboard to the content, or in it to the first that can take it.
    function takeKeyboard() {
        area.item.forceActiveFocus(Qt.OtherFocusReason);
        if (area.Window.activeFocusItem === area.item)
            area.item.nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason);
    }

    BackupChangesState {
        id: changesState
        model: sheet.model
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
                    TextLabel {
                        Layout.fillWidth: true
                        text: changesState.content.subtitle
                        color: Theme.secondaryText
                    }
                }
                AppButton {
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
                sourceComponent: changesState.content.isLocked ? locked
                               : changesState.content.isRunning ? running
                               : changesState.content.hasResults ? results : message
                // What had the keyboard may have gone with the former content.
                onLoaded: if (sheet.opened && !done.activeFocus) sheet.takeKeyboard()
            }
        }
    }

    FullDiskAccessGuide {
        id: guide
        model: sheet.model
        helperSetup: sheet.helperSetup
        pasteboard: sheet.pasteboard
    }

    Component {
        id: locked
        CentredPage {
            focus: true
            LockedNotice {
                width: parent.width
                heading: qsTr("Seeing file changes needs Full Disk Access")
                text: qsTr("tmutil cannot read backup contents without it.")
                onGuideRequested: guide.open()
            }
        }
    }
    Component {
        id: message
        CentredPage {
            focus: true
            EmptyState {
                width: parent.width
                systemImage: changesState.content.messageSymbol
                description: changesState.content.message
            }
        }
    }
    Component {
        id: running
        CentredPage {
            focus: true
            BackupChangesProgress {
                width: parent.width
                content: changesState.content
                onCancelRequested: sheet.close()
            }
        }
    }
    Component {
        id: results
        BackupChangesResults {
            focus: true
            changes: sheet.changes
            pasteboard: sheet.pasteboard
        }
    }
}
