import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Timeline

// Every backup of the destination as a bar of a chart, which the keyboard can adjust and open too.
Card {
    id: timeline
    required property ScreenContext context
    readonly property alias viewModel: timelineViewModel

    title: qsTr("Backup timeline")
    systemImage: "clock.arrow.circlepath"

    TimelineViewModel {
        id: timelineViewModel
        context: timeline.context
        helperExists: timeline.context.helperSetup.helperExists
        differentiateWithoutColor: Theme.differentiateWithoutColor
    }

    Loader {
        width: parent.width
        active: !timelineViewModel.content.hasChart
        visible: active
        sourceComponent: EmptyState {
            title: qsTr("Not enough history")
            systemImage: "clock.badge.questionmark"
            description: qsTr("At least two backups are needed to chart cadence.")
        }
    }

    Flow {
        width: parent.width
        visible: timelineViewModel.content.hasChart
        spacing: Theme.unit

        SegmentedPicker {
            width: Math.min(implicitWidth, timeline.width - timeline.padding * 2)
            label: qsTr("Measure")
            model: timelineViewModel.metricNames
            currentIndex: timelineViewModel.metric
            onActivated: index => timelineViewModel.metric = index
        }
        Loader {
            active: chart.isZoomed
            visible: active
            sourceComponent: Button {
                flat: true
                systemImage: "arrow.left.arrow.right"
                text: qsTr("Show all")
                onClicked: chart.showAll()
            }
        }
    }

    Caption {
        width: parent.width
        visible: text !== ""
        text: timelineViewModel.content.caption
    }

    Loader {
        width: parent.width
        active: timelineViewModel.content.hasChart && timelineViewModel.content.prompt.shown
        visible: active
        sourceComponent: TimelineHelperCard {
            prompt: timelineViewModel.content.prompt
            copied: timelineViewModel.copiedCommand
            onCopyRequested: {
                timeline.context.clipboard.setText(timelineViewModel.installCommand);
                timelineViewModel.copiedCommand = true;
            }
            onGuideRequested: timeline.context.openSheet(ScreenContext.HelperAccessGuide)
            onRefreshRequested: timeline.context.model.reloadManifest()
        }
    }

    TimelineChart {
        id: chart
        width: parent.width
        implicitHeight: Theme.unit * (17 + 10 * Theme.textScale)
        visible: timelineViewModel.content.hasChart
        viewModel: timelineViewModel
        onActiveFocusChanged: timelineViewModel.chartFocused = activeFocus

        Accessible.role: Accessible.Slider
        Accessible.name: timelineViewModel.content.accessibleName
        Accessible.description: timelineViewModel.content.accessibleDescription
        Accessible.focusable: true
        Accessible.onIncreaseAction: timelineViewModel.moveSelection(1)
        Accessible.onDecreaseAction: timelineViewModel.moveSelection(-1)
        Accessible.onPressAction: timelineViewModel.openSelectedChanges()

        FocusRing {
            anchors.margins: -Theme.unit * 0.75
            visible: chart.visualFocus
        }
        PinchHandler {
            property real previous: 1
            target: null
            onActiveChanged: previous = 1
            onActiveScaleChanged: {
                chart.zoom(activeScale / previous, centroid.position.x);
                previous = activeScale;
            }
        }
        Loader {
            active: chart.tip !== ""
            visible: active
            sourceComponent: BarTip {
                parent: chart
                bar: chart.tipPosition
                text: chart.tip
                visible: true
            }
        }
    }

    TimelineDetail {
        width: parent.width
        visible: timelineViewModel.content.hasChart
        content: timelineViewModel.content
    }

    TimelineLegend {
        width: parent.width
        visible: timelineViewModel.content.hasChart
        items: timelineViewModel.content.legend
    }
}
