#include "Tallyglass/Screens/Diagnostics/DiagnosticsViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"

namespace tallyglass {

namespace {

constexpr std::int64_t benchmarkDepth = 3; // as comparisons are made at first

} // namespace

DiagnosticsViewModel::DiagnosticsViewModel(QObject* parent) : ViewModel(parent) {
    connect(this, &ViewModel::contextChanged, this, [this] {
        for (const auto topic : {&AppModel::diagnosticsChanged, &AppModel::benchmarkChanged})
            if (model())
                connect(model(), topic, this, &DiagnosticsViewModel::scheduleUpdate);
    });
}

void DiagnosticsViewModel::update() {
    const AppModel& from = *model();
    m_captureJob = jobContent(from.diagnosticsProgress(), from.diagnosticsElapsed(), from.diagnosticsError());
    m_diagnostics = diagnosticsContent(from.fdaStatus(), from.lastDump());
    m_benchmarkJob = jobContent(from.benchmarkProgress(), from.benchmarkElapsed(), from.benchmarkError());
    m_benchmark = benchmarkContent(from.benchmarkResults(), from.isBenchmarkSaved());
}

void DiagnosticsViewModel::capture() {
    if (model())
        model()->captureDiagnostics();
}

void DiagnosticsViewModel::cancelCapture() {
    if (model())
        model()->cancelDiagnostics();
}

void DiagnosticsViewModel::revealFolder() {
    if (model() && model()->lastDump())
        context()->workspace()->reveal(model()->lastDump()->directory);
}

void DiagnosticsViewModel::runBenchmark() {
    if (model())
        model()->runBenchmark(benchmarkDepth);
}

void DiagnosticsViewModel::cancelBenchmark() {
    if (model())
        model()->cancelBenchmark();
}

void DiagnosticsViewModel::copyReport() {
    if (model())
        context()->clipboard()->setText(toQString(CompareBenchmark::report(model()->benchmarkResults())));
}

} // namespace tallyglass
