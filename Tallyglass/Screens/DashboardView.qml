import QtQuick
import QtQuick.Layouts
import Tallyglass

// Which destination, how full, is a backup running, how have the backups gone, how is Time Machine set up. A wide
// window shows the last two blocks beside the others.
ScrollPage {
    id: dashboard
    required property AppModel model
    required property HelperSetup helperSetup
    required property Pasteboard pasteboard

    readonly property bool wide: width >= Theme.unit * 130 * Theme.textScale

    maximumContentWidth: wide ? Theme.unit * 170 : Theme.unit * 110

    DashboardState {
        id: state
        model: dashboard.model
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }
    FullDiskAccessGuide {
        id: guide
        model: dashboard.model
        helperSetup: dashboard.helperSetup
        pasteboard: dashboard.pasteboard
        target: FullDiskAccessGuide.App
    }

    Reveal {
        shown: state.error !== ""
        spacing: dashboard.spacing
        ErrorBanner {
            width: parent.width
            text: state.error
        }
    }
    EmptyState {
        Layout.preferredHeight: Math.max(implicitHeight, dashboard.height - dashboard.margin * 2)
        visible: !state.hasDestination && !state.isWaiting
        title: qsTr("No backup destination")
        systemImage: "externaldrive.badge.questionmark"
        description: qsTr("Time Machine has not been configured on this Mac.")
    }
    GridLayout {
        Layout.fillWidth: true
        visible: state.hasDestination
        columns: dashboard.wide ? 2 : 1
        columnSpacing: dashboard.spacing
        rowSpacing: dashboard.spacing

        ColumnLayout {
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
            spacing: dashboard.spacing

            DestinationHeader { content: state.header }
            Reveal {
                shown: state.isRunning
                spacing: dashboard.spacing
                ActivityCard {
                    width: parent.width
                    content: state.activity
                }
            }
            HealthCard { content: state.health }
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.preferredWidth: dashboard.wide ? Theme.unit * 46 : -1
            Layout.maximumWidth: dashboard.wide ? Theme.unit * 46 : Number.POSITIVE_INFINITY
            Layout.alignment: Qt.AlignTop
            spacing: dashboard.spacing

            UnlockCard {
                visible: state.unlock.shown
                content: state.unlock
                onGuideRequested: guide.open()
            }
            ConfigurationCard { content: state.configuration }
        }
    }
}
