import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Diagnostics

// Captures diagnostics and runs the benchmark, and shows what they found.
Card {
    id: card
    required property ScreenContext context

    title: qsTr("Diagnostics")
    systemImage: "terminal.fill"

    component Failure: Loader {
        id: failure
        property string text

        width: parent.width
        active: text !== ""
        visible: active
        sourceComponent: Component {
            Note {
                text: failure.text
                systemImage: "exclamationmark.triangle.fill"
                symbolColor: Theme.warning
                textColor: Theme.text
            }
        }
    }

    DiagnosticsViewModel {
        id: diagnosticsViewModel
        context: card.context
    }
    Label {
        width: parent.width
        text: qsTr("Saves raw tmutil output to a folder on your Desktop. Read-only — nothing in your backups is "
                   + "modified.")
        color: Theme.secondaryText
    }
    Note {
        width: parent.width
        visible: text !== ""
        text: diagnosticsViewModel.diagnostics.accessNote
        systemImage: "info.circle"
    }
    JobControls {
        width: parent.width
        running: diagnosticsViewModel.captureJob.isRunning
        progress: diagnosticsViewModel.captureJob.progress
        elapsed: diagnosticsViewModel.captureJob.elapsed
        onCancelRequested: diagnosticsViewModel.cancelCapture()

        Button {
            text: qsTr("Capture Diagnostics")
            systemImage: "square.and.arrow.down"
            onClicked: diagnosticsViewModel.capture()
        }
        Button {
            visible: diagnosticsViewModel.diagnostics.summary !== ""
            text: qsTr("Reveal Folder")
            systemImage: "folder"
            onClicked: diagnosticsViewModel.revealFolder()
        }
    }
    Failure { text: diagnosticsViewModel.captureJob.error }
    Loader {
        width: parent.width
        active: diagnosticsViewModel.diagnostics.summary !== ""
        visible: active
        sourceComponent: DiagnosticsSteps { content: diagnosticsViewModel.diagnostics }
    }
    Divider { width: parent.width }
    Label {
        width: parent.width
        text: qsTr("Benchmark comparison strategies")
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Label {
        width: parent.width
        text: qsTr("Times property sets and concurrency levels, each against its own disjoint backup pairs so every "
                   + "measurement starts cold. Takes a few minutes and reads only — nothing is modified.")
        color: Theme.secondaryText
    }
    JobControls {
        width: parent.width
        running: diagnosticsViewModel.benchmarkJob.isRunning
        progress: diagnosticsViewModel.benchmarkJob.progress
        elapsed: diagnosticsViewModel.benchmarkJob.elapsed
        onCancelRequested: diagnosticsViewModel.cancelBenchmark()

        Button {
            text: qsTr("Run Benchmark")
            systemImage: "timer"
            onClicked: diagnosticsViewModel.runBenchmark()
        }
        Button {
            visible: diagnosticsViewModel.benchmark.rows.length > 0
            text: qsTr("Copy report")
            systemImage: "doc.on.doc"
            onClicked: diagnosticsViewModel.copyReport()
        }
    }
    Failure { text: diagnosticsViewModel.benchmarkJob.error }
    Loader {
        width: parent.width
        active: diagnosticsViewModel.benchmark.rows.length > 0
        visible: active
        sourceComponent: BenchmarkResults { content: diagnosticsViewModel.benchmark }
    }
}
