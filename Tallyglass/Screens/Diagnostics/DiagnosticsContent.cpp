#include "Tallyglass/Screens/Diagnostics/DiagnosticsContent.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

namespace tallyglass {

namespace {

class DiagnosticsCard {
    Q_DECLARE_TR_FUNCTIONS(DiagnosticsCard)
};

/// Why the probe failed. The report of one that succeeded stands in the saved summary.
QString failureOf(const DiagnosticsDump::Step& step) {
    if (step.succeeded())
        return {};
    if (step.error && !step.error->empty())
        return toQString(*step.error);
    return step.exitCode ? DiagnosticsCard::tr("Exit code %1").arg(*step.exitCode) : QString();
}

DiagnosticsStepContent stepContent(const DiagnosticsDump::Step& step) {
    const bool succeeded = step.succeeded();
    DiagnosticsStepContent content{
        .symbol = succeeded ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("xmark.circle.fill"),
        .role = succeeded ? Theme::Role::healthy : Theme::Role::critical,
        .label = toQString(step.label),
        .detail = failureOf(step),
        .accessibleValue = succeeded ? DiagnosticsCard::tr("Succeeded") : DiagnosticsCard::tr("Failed")};
    if (!content.detail.isEmpty())
        content.accessibleValue += QStringLiteral(", ") + content.detail;
    return content;
}

QString conclusionOf(const BenchmarkResult& fastest) {
    return DiagnosticsCard::tr(
               "Of the sets that also look at dates, “%1” was the fastest here: %2 s per pair. "
               "Size alone misses changes that keep a file's size. One run can't settle small "
               "differences.")
        .arg(toQString(fastest.label), toQString(fmt::format("{:.2f}", fastest.secondsPerPair())));
}

} // namespace

QVariantList DiagnosticsContent::stepList() const {
    return variants(steps);
}

QString BenchmarkRowContent::accessibleValue() const {
    QStringList parts{time, pairs, note};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QVariantList BenchmarkContent::rowList() const {
    return variants(rows);
}

JobContent jobContent(const std::optional<std::string>& progress, const std::string& elapsed,
                      const std::optional<std::string>& error) {
    JobContent content;
    content.error = toQString(error.value_or(""));
    if (progress) {
        content.isRunning = true;
        content.progress = toQString(*progress);
        content.elapsed = toQString(elapsed);
    }
    return content;
}

DiagnosticsContent diagnosticsContent(FDAStatus access, const std::optional<DiagnosticsDump>& dump) {
    DiagnosticsContent content;
    if (access != FDAStatus::granted)
        content.accessNote =
            DiagnosticsCard::tr("Without Full Disk Access most probes will record a permission error.");
    if (dump) {
        content.summary = toQString(dump->summary());
        for (const auto& step : dump->steps)
            content.steps.append(stepContent(step));
    }
    return content;
}

BenchmarkContent benchmarkContent(std::span<const BenchmarkResult> results, bool isSaved) {
    BenchmarkContent content;
    const auto* fastest = CompareBenchmark::fastestSet(results);
    double longest = 0;
    for (const auto& result : results)
        longest = std::max(longest, result.secondsPerPair());
    for (const auto& result : results) {
        auto& row = content.rows.emplaceBack();
        row.label = toQString(result.label);
        row.pairs = DiagnosticsCard::tr("%1 pairs").arg(grouped(result.pairsUsed));
        row.note = toQString(result.error.value_or(""));
        row.isNamed = &result == fastest;
        if (result.seconds > 0) {
            row.time = toQString(fmt::format("{:.2f}s/pair", result.secondsPerPair()));
            row.fraction = result.secondsPerPair() / longest;
        }
    }
    if (fastest)
        content.conclusion = conclusionOf(*fastest);
    if (isSaved && !results.empty())
        content.savedNote = DiagnosticsCard::tr("Saved to the diagnostics folder as benchmark.txt.");
    return content;
}

} // namespace tallyglass
