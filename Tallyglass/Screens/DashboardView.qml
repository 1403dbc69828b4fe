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
        id: dashboardState
        model: dashboard.model
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }
    Loader { // of a sheet over the window
        id: guide
        active: false
        visible: false
        sourceComponent: FullDiskAccessGuide {
            model: dashboard.model
            helperSetup: dashboard.helperSetup
            pasteboard: dashboard.pasteboard
            target: FullDiskAccessGuide.App
            visible: true
            onClosed: guide.active = false
        }
    }

    Reveal {
        id: errors
        shown: dashboardState.error !== ""
        spacing: dashboard.spacing
        Lazy {
            shown: errors.progress > 0
            sourceComponent: ErrorBanner { text: dashboardState.error }
        }
    }
    Lazy {
        parent: dashboard // in the middle of what can be seen
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        shown: !dashboardState.hasDestination && !dashboardState.isWaiting
        sourceComponent: EmptyState {
            title: qsTr("No backup destination")
            systemImage: "externaldrive.badge.questionmark"
            description: qsTr("Time Machine has not been configured on this Mac.")
        }
    }
    Item {
        visible: dashboardState.hasDestination
        implicitWidth: main.implicitWidth
        implicitHeight: Math.max(main.height, aside.y + aside.height)

        Stack {
            id: main
            width: dashboard.wide ? aside.x - dashboard.spacing : parent.width
            spacing: dashboard.spacing

            DestinationHeader { content: dashboardState.header }
            Reveal {
                id: activity
                shown: dashboardState.isRunning
                spacing: dashboard.spacing
                Lazy {
                    shown: activity.progress > 0
                    sourceComponent: ActivityCard { content: dashboardState.activity }
                }
            }
            TimelineView {
                model: dashboard.model
                helperSetup: dashboard.helperSetup
                pasteboard: dashboard.pasteboard
            }
            HealthCard { content: dashboardState.health }
            Lazy {
                shown: dashboardState.unlock.shown
                sourceComponent: UnlockCard {
                    content: dashboardState.unlock
                    onGuideRequested: guide.active = true
                }
            }
        }
        Stack {
            id: aside
            x: dashboard.wide ? parent.width - width : 0
            y: dashboard.wide ? 0 : main.height + spacing
            width: dashboard.wide ? Theme.unit * 44 * Theme.textScale : parent.width
            spacing: dashboard.spacing

            ConfigurationCard { content: dashboardState.configuration }
        }
    }
}
