// The diagnostics card's state over the application's model, which owns the jobs. Main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Diagnostics/DiagnosticsContent.h"

#include <qqmlintegration.h>

#include <QProperty>

namespace tallyglass {

class DiagnosticsViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::JobContent captureJob READ captureJob NOTIFY captureJobChanged)
    Q_PROPERTY(tallyglass::DiagnosticsContent diagnostics READ diagnostics NOTIFY diagnosticsChanged)
    Q_PROPERTY(tallyglass::JobContent benchmarkJob READ benchmarkJob NOTIFY benchmarkJobChanged)
    Q_PROPERTY(tallyglass::BenchmarkContent benchmark READ benchmark NOTIFY benchmarkChanged)

public:
    explicit DiagnosticsViewModel(QObject* parent = nullptr);

    [[nodiscard]] JobContent captureJob() const { return m_captureJob; }
    [[nodiscard]] DiagnosticsContent diagnostics() const { return m_diagnostics; }
    [[nodiscard]] JobContent benchmarkJob() const { return m_benchmarkJob; }
    [[nodiscard]] BenchmarkContent benchmark() const { return m_benchmark; }

    Q_INVOKABLE void capture();
    Q_INVOKABLE void cancelCapture();
    /// Shows the folder of the last capture in the file manager.
    Q_INVOKABLE void revealFolder();
    Q_INVOKABLE void runBenchmark();
    Q_INVOKABLE void cancelBenchmark();
    Q_INVOKABLE void copyReport();

signals:
    void captureJobChanged();
    void diagnosticsChanged();
    void benchmarkJobChanged();
    void benchmarkChanged();

protected:
    void update() override;

private:
    using Self = DiagnosticsViewModel;
    Q_OBJECT_BINDABLE_PROPERTY(Self, JobContent, m_captureJob, &Self::captureJobChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, DiagnosticsContent, m_diagnostics, &Self::diagnosticsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, JobContent, m_benchmarkJob, &Self::benchmarkJobChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, BenchmarkContent, m_benchmark, &Self::benchmarkChanged)
};

} // namespace tallyglass
