import QtQuick
import Tallyglass

// Which destination, how full, is a backup running, how have the backups gone, how is Time Machine set up. A wide
// window shows the last block beside the others.
ScrollPage {
    id: dashboard
    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard

    readonly property bool wide: width >= Theme.unit * 130 * Theme.textScale

    maximumContentWidth: Theme.unit * (wide ? 170 : 110) * Math.max(1, Theme.textScale)

    DashboardState {
        id: dashboardState
        model: dashboard.model
        headerOnly: !Startup.over
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }
    Later { // a sheet over the window
        id: guide
        shown: false
        file: "FullDiskAccessGuide.qml"
        inputs: () => ({
            model: dashboard.model, helperSetup: dashboard.helperSetup, pasteboard: dashboard.pasteboard,
            visible: true
        })
        Connections {
            target: guide.item
            function onClosed() { guide.shown = false; }
        }
    }

    Later {
        width: parent.width
        file: "RevealedError.qml"
        inputs: () => ({ error: dashboardState.error, spacing: dashboard.spacing })
    }
    Later {
        parent: dashboard // in the middle of what can be seen
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        shown: !dashboardState.hasDestination
        file: "EmptyState.qml"
        inputs: () => dashboardState.isWaiting ? {
            busy: true,
            title: qsTr("Reading the Time Machine settings…"),
            systemImage: "",
            description: ""
        } : {
            busy: false,
            title: qsTr("No backup destination"),
            systemImage: "externaldrive.badge.questionmark",
            description: qsTr("Time Machine has not been configured on this Mac.")
        }
    }
    Item {
        width: parent.width
        visible: dashboardState.hasDestination
        implicitHeight: Math.max(main.height, aside.y + aside.height)

        Column {
            id: main
            width: dashboard.wide ? aside.x - dashboard.spacing : parent.width
            spacing: dashboard.spacing

            Loader { // as Lazy, without a type that the first frame would have to load
                width: parent.width
                active: dashboardState.hasDestination
                visible: active
                sourceComponent: DestinationHeader {
                    content: dashboardState.header
                    tileContents: dashboardState.tiles
                }
            }
            Later {
                width: parent.width
                file: "RevealedActivity.qml"
                inputs: () => ({
                    running: dashboardState.isRunning, content: dashboardState.activity, spacing: dashboard.spacing
                })
            }
            Later {
                width: parent.width
                file: "TimelineView.qml"
                inputs: () => ({
                    model: dashboard.model, helperSetup: dashboard.helperSetup, pasteboard: dashboard.pasteboard
                })
            }
            Later {
                width: parent.width
                file: "HealthCard.qml"
                inputs: () => ({ content: dashboardState.health })
            }
            Later {
                id: unlock
                width: parent.width
                shown: dashboardState.unlock.shown
                file: "UnlockCard.qml"
                inputs: () => ({ content: dashboardState.unlock })
                Connections {
                    target: unlock.item
                    function onGuideRequested() { guide.shown = true; }
                }
            }
        }
        Column {
            id: aside
            x: dashboard.wide ? parent.width - width : 0
            y: dashboard.wide ? 0 : main.height + spacing
            width: dashboard.wide ? Theme.unit * 44 * Theme.textScale : parent.width
            spacing: dashboard.spacing

            Later {
                width: parent.width
                file: "ConfigurationCard.qml"
                inputs: () => ({ content: dashboardState.configuration })
            }
        }
    }
}
