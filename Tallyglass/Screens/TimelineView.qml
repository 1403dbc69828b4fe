import QtQuick
import Tallyglass

// Every backup of the destination as a bar. The chart is adjusted and opened from the keyboard too.
Card {
    id: timeline
    required property AppModel model
    required property HelperSetup helperSetup
    required property Pasteboard pasteboard
    readonly property alias view: timelineState

    title: qsTr("Backup timeline")
    systemImage: "clock.arrow.circlepath"

    TimelineState {
        id: timelineState
        model: timeline.model
        helperExists: timeline.helperSetup.helperExists
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }

    Lazy {
        width: parent.width
        shown: !timelineState.content.hasChart
        sourceComponent: EmptyState {
            title: qsTr("Not enough history")
            systemImage: "clock.badge.questionmark"
            description: qsTr("At least two backups are needed to chart cadence.")
        }
    }

    Flow {
        width: parent.width
        visible: timelineState.content.hasChart
        spacing: Theme.unit

        SegmentedPicker {
            width: Math.min(implicitWidth, timeline.width - timeline.padding * 2)
            label: qsTr("Measure")
            options: timelineState.metricNames
            currentIndex: timelineState.metric
            onPicked: index => timelineState.metric = index
        }
        Lazy {
            shown: chart.isZoomed
            sourceComponent: AppButton {
                kind: AppButton.Tool
                systemImage: "arrow.left.arrow.right"
                text: qsTr("Show all")
                onClicked: chart.showAll()
            }
        }
    }

    Caption {
        width: parent.width
        visible: text !== ""
        text: timelineState.content.caption
    }

    Lazy {
        width: parent.width
        shown: timelineState.content.hasChart && timelineState.content.prompt.shown
        sourceComponent: TimelineHelperCard {
            prompt: timelineState.content.prompt
            copied: timelineState.copiedCommand
            onCopyRequested: {
                timeline.pasteboard.setText(timelineState.installCommand);
                timelineState.copiedCommand = true;
            }
            onGuideRequested: timelineState.showingHelperGuide = true
            onRefreshRequested: timeline.model.reloadManifest()
        }
    }

    Later { // a sheet over the window
        id: guide
        shown: timelineState.showingHelperGuide
        file: "FullDiskAccessGuide.qml"
        inputs: () => ({
            forHelper: true, model: timeline.model, helperSetup: timeline.helperSetup,
            pasteboard: timeline.pasteboard, visible: true
        })
        Connections {
            target: guide.item
            function onClosed() { timelineState.showingHelperGuide = false; }
        }
    }

    Later { // a sheet over the window
        id: changes
        shown: timelineState.changesTarget !== undefined
        file: "BackupChangesView.qml"
        inputs: () => ({
            model: timeline.model, helperSetup: timeline.helperSetup, pasteboard: timeline.pasteboard,
            target: timelineState.changesTarget, visible: true
        })
        Connections {
            target: changes.item
            function onClosed() {
                timelineState.closeChanges();
                chart.forceActiveFocus(Qt.PopupFocusReason);
            }
        }
    }

    TimelineChart {
        id: chart
        width: parent.width
        implicitHeight: Theme.unit * (17 + 10 * Theme.textScale)
        visible: timelineState.content.hasChart
        view: timelineState
        onActiveFocusChanged: timelineState.chartFocused = activeFocus

        Accessible.role: Accessible.Slider
        Accessible.name: timelineState.content.accessibleName
        Accessible.description: timelineState.content.accessibleDescription
        Accessible.focusable: true
        Accessible.onIncreaseAction: timelineState.moveSelection(1)
        Accessible.onDecreaseAction: timelineState.moveSelection(-1)
        Accessible.onPressAction: timelineState.openSelectedChanges()

        FocusRing { anchors.margins: -Theme.unit * 0.75 }
        PinchHandler {
            property real previous: 1
            target: null
            onActiveChanged: previous = 1
            onActiveScaleChanged: {
                chart.zoom(activeScale / previous, centroid.position.x);
                previous = activeScale;
            }
        }
        Later {
            shown: chart.tip !== ""
            file: "BarTip.qml"
            inputs: () => ({ parent: chart, bar: chart.tipPosition, text: chart.tip, visible: true })
        }
    }

    TimelineDetail {
        width: parent.width
        visible: timelineState.content.hasChart
        content: timelineState.content
    }

    TimelineLegend {
        width: parent.width
        visible: timelineState.content.hasChart
        items: timelineState.content.legend
    }
}
