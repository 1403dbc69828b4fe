// The jobs of the model that the user starts and may wait for minutes for.

#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Models/AppModel.h"
#include "TallyglassKit/Insight/DiagnosticsCapture.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"

#include <fmt/format.h>

#include <utility>

namespace tallyglass {

namespace {

constexpr std::int64_t diagnosticsDepth = 3;
constexpr std::int64_t pairsPerCondition = 3;

/// Whether the report on the results could be saved beside the diagnostics.
bool saveReport(const std::vector<BenchmarkResult>& results, const std::filesystem::path& desktop) {
    try {
        const auto folder = makeDiagnosticsFolder(diagnosticsFolder(desktop));
        writePrivateFile(folder / "benchmark.txt", CompareBenchmark::report(results));
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

void AppModel::captureDiagnostics() {
    m_diagnosticsTask.cancel();
    m_diagnosticsError.setValue(std::nullopt);
    m_diagnostics.begin("Starting…");
    m_diagnosticsTask = startTask(
        this,
        [runner = m_environment.runner, desktop = m_environment.desktopFolder,
         time = m_environment.probeTime](TaskContext& task) {
            return tallyglass::captureDiagnostics(runner, diagnosticsFolder(desktop()), diagnosticsDepth,
                                                  task.post(&AppModel::tellProbe), task.stopToken(), time);
        },
        [this](DiagnosticsDump dump) {
            m_lastDump.setValue(std::move(dump));
            if (m_environment.workspace)
                m_environment.workspace->reveal(lastDump()->directory);
            m_diagnostics.end();
        },
        [this](const std::exception_ptr& failure) {
            if (!isCancellation(failure)) {
                m_diagnosticsError.setValue(describe(failure));
                setLastError(diagnosticsError());
            }
            m_diagnostics.end();
        });
}

void AppModel::cancelDiagnostics() {
    m_diagnosticsTask.cancel();
    m_diagnostics.end();
}

void AppModel::runBenchmark(std::optional<std::int64_t> depth) {
    m_benchmarkTask.cancel();
    m_benchmarkError.setValue(std::nullopt);
    m_benchmark.begin("Listing backups…");
    m_benchmarkTask = startTask(
        this,
        [runner = m_environment.runner, desktop = m_environment.desktopFolder, depth](TaskContext& task) {
            const auto backups = runner.backupPaths(task.stopToken());
            auto results = CompareBenchmark::run(runner, backups, pairsPerCondition, depth,
                                                 task.post(&AppModel::tellCondition), task.stopToken());
            const bool isSaved = saveReport(results, desktop());
            return Benchmark{std::move(results), isSaved};
        },
        [this](Benchmark benchmark) {
            m_isBenchmarkSaved.setValue(benchmark.isSaved);
            m_benchmarkResults.setValue(std::move(benchmark.results));
            m_benchmark.end();
        },
        [this](const std::exception_ptr& failure) {
            if (!isCancellation(failure)) {
                m_benchmarkError.setValue(describe(failure));
                setLastError(benchmarkError());
            }
            m_benchmark.end();
        });
}

void AppModel::cancelBenchmark() {
    m_benchmarkTask.cancel();
    m_benchmark.end();
}

void AppModel::tellCondition(const std::string& text) {
    m_benchmark.setText(fmt::format("Timing {}…", text));
}

} // namespace tallyglass
