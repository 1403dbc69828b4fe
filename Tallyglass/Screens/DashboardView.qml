import QtQuick
import Tallyglass

// Which destination, how full, is a backup running, how have the backups gone, how is Time Machine set up. A wide
// window shows the last block beside the others.
ScrollPage {
    id: dashboard
    required property AppModel model
    required property HelperSetup helperSetup
    required property Pasteboard pasteboard

    readonly property bool wide: width >= Theme.unit * 130 * Theme.textScale

    maximumContentWidth: Theme.unit * (wide ? 170 : 110) * Math.max(1, Theme.textScale)

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
            text: state.error
        }
    }
    EmptyState {
        parent: dashboard // in the middle of what can be seen
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        visible: !state.hasDestination && !state.isWaiting
        title: qsTr("No backup destination")
        systemImage: "externaldrive.badge.questionmark"
        description: qsTr("Time Machine has not been configured on this Mac.")
    }
    Item {
        visible: state.hasDestination
        implicitWidth: main.implicitWidth
        implicitHeight: Math.max(main.height, aside.y + aside.height)

        Stack {
            id: main
            width: dashboard.wide ? aside.x - dashboard.spacing : parent.width
            spacing: dashboard.spacing

            DestinationHeader { content: state.header }
            Reveal {
                shown: state.isRunning
                spacing: dashboard.spacing
                ActivityCard {
                    content: state.activity
                }
            }
            TimelineView {
                model: dashboard.model
                helperSetup: dashboard.helperSetup
                pasteboard: dashboard.pasteboard
            }
            HealthCard { content: state.health }
            UnlockCard {
                visible: state.unlock.shown
                content: state.unlock
                onGuideRequested: guide.open()
            }
        }
        Stack {
            id: aside
            x: dashboard.wide ? parent.width - width : 0
            y: dashboard.wide ? 0 : main.height + spacing
            width: dashboard.wide ? Theme.unit * 44 * Theme.textScale : parent.width
            spacing: dashboard.spacing

            ConfigurationCard { content: state.configuration }
        }
    }
}
