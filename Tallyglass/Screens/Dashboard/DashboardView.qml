import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Dashboard

// The destination and how full it is, the running backup, the timeline, the health of the backups, and what is asked
// for less often, such as the configuration, which a wide window shows beside the others.
ScrollPage {
    id: dashboard
    required property ScreenContext context
    required property Component timeline // these are cards of other rooms
    required property Component support
    required property Component diagnostics

    readonly property bool wide: width >= Theme.unit * 130 * Theme.textScale

    maximumContentWidth: Theme.unit * (wide ? 170 : 110) * Math.max(1, Theme.textScale)

    DashboardViewModel {
        id: dashboardViewModel
        context: dashboard.context
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }

    Reveal {
        id: error
        width: parent.width
        revealed: dashboardViewModel.error !== ""
        spacing: dashboard.spacing
        Loader {
            width: parent.width
            active: error.progress > 0
            sourceComponent: ErrorBanner { text: dashboardViewModel.error }
        }
    }
    Loader {
        parent: dashboard // centred in the visible part
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        active: !dashboardViewModel.hasDestination
        sourceComponent: dashboardViewModel.isWaiting ? waiting : noDestination
    }
    Component {
        id: waiting
        EmptyState {
            busy: true
            title: qsTr("Reading the Time Machine settings…")
        }
    }
    Component {
        id: noDestination
        EmptyState {
            title: qsTr("No backup destination")
            systemImage: "externaldrive.badge.questionmark"
            description: qsTr("Time Machine has not been configured on this Mac.")
        }
    }
    Item {
        width: parent.width
        visible: dashboardViewModel.hasDestination
        implicitHeight: Math.max(main.height, aside.y + aside.height)

        Column {
            id: main
            width: dashboard.wide ? aside.x - dashboard.spacing : parent.width
            spacing: dashboard.spacing

            DestinationHeader {
                width: parent.width
                content: dashboardViewModel.header
                tileContents: dashboardViewModel.tiles
            }
            Reveal {
                id: activity
                width: parent.width
                revealed: dashboardViewModel.isRunning
                spacing: dashboard.spacing
                Loader {
                    width: parent.width
                    active: activity.progress > 0
                    sourceComponent: ActivityCard { content: dashboardViewModel.activity }
                }
            }
            Loader {
                width: parent.width
                sourceComponent: dashboard.timeline
            }
            HealthCard {
                width: parent.width
                content: dashboardViewModel.health
            }
            Loader {
                width: parent.width
                active: dashboardViewModel.unlock.shown
                visible: active
                sourceComponent: UnlockCard {
                    content: dashboardViewModel.unlock
                    onGuideRequested: dashboard.context.openSheet(ScreenContext.AppAccessGuide)
                }
            }
        }
        Column {
            id: aside
            x: dashboard.wide ? parent.width - width : 0
            y: dashboard.wide ? 0 : main.height + spacing
            width: dashboard.wide ? Theme.unit * 44 * Theme.textScale : parent.width
            spacing: dashboard.spacing

            ConfigurationCard {
                width: parent.width
                content: dashboardViewModel.configuration
            }
            Loader {
                width: parent.width
                sourceComponent: dashboard.support
            }
            Loader {
                width: parent.width
                sourceComponent: dashboard.diagnostics
            }
        }
    }
}
