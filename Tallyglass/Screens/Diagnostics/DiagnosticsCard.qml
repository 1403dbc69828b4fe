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
    Note {
        width: parent.width
        visible: text !== ""
        text: diagnosticsViewModel.captureJob.error
        systemImage: "exclamationmark.triangle.fill"
        symbolColor: Theme.warning
        textColor: Theme.text
    }
    DiagnosticsSteps {
        width: parent.width
        visible: diagnosticsViewModel.diagnostics.summary !== ""
        content: diagnosticsViewModel.diagnostics
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
    Note {
        width: parent.width
        visible: text !== ""
        text: diagnosticsViewModel.benchmarkJob.error
        systemImage: "exclamationmark.triangle.fill"
        symbolColor: Theme.warning
        textColor: Theme.text
    }
    BenchmarkResults {
        width: parent.width
        visible: diagnosticsViewModel.benchmark.rows.length > 0
        content: diagnosticsViewModel.benchmark
    }
}
