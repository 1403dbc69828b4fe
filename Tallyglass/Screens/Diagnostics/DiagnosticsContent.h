// What the diagnostics card says of a capture and of a benchmark, made from what the model knows. Values.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Insight/CompareBenchmark.h"
#include "TallyglassKit/Insight/DiagnosticsDump.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <optional>
#include <span>
#include <string>

namespace tallyglass {

/// A job that may be running, or may have failed.
struct JobContent {
    Q_GADGET
    QML_VALUE_TYPE(jobContent)

    Q_PROPERTY(bool isRunning MEMBER isRunning)
    Q_PROPERTY(QString progress MEMBER progress)
    Q_PROPERTY(QString elapsed MEMBER elapsed)
    Q_PROPERTY(QString error MEMBER error)

public:
    bool isRunning = false;
    QString progress;
    QString elapsed; ///< such as "1:15"
    QString error;   ///< of the last run; else empty

    friend bool operator==(const JobContent&, const JobContent&) = default;
};

struct DiagnosticsStepContent {
    Q_GADGET
    QML_VALUE_TYPE(diagnosticsStepContent)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString accessibleValue MEMBER accessibleValue)

public:
    QString symbol;
    Theme::Role role = Theme::Role::healthy;
    QString label;
    QString detail; ///< why it failed, else empty
    QString accessibleValue;

    friend bool operator==(const DiagnosticsStepContent&, const DiagnosticsStepContent&) = default;
};

struct DiagnosticsContent {
    Q_GADGET
    QML_VALUE_TYPE(diagnosticsContent)

    Q_PROPERTY(QString accessNote MEMBER accessNote)
    Q_PROPERTY(QString summary MEMBER summary)
    Q_PROPERTY(QVariantList steps READ stepList)

public:
    QString accessNote; ///< empty with Full Disk Access
    QString summary;    ///< empty without a capture
    QList<DiagnosticsStepContent> steps;

    [[nodiscard]] QVariantList stepList() const;

    friend bool operator==(const DiagnosticsContent&, const DiagnosticsContent&) = default;
};

/// One measured condition.
struct BenchmarkRowContent {
    Q_GADGET
    QML_VALUE_TYPE(benchmarkRowContent)

    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString time MEMBER time)
    Q_PROPERTY(QString pairs MEMBER pairs)
    Q_PROPERTY(QString note MEMBER note)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(bool isNamed MEMBER isNamed)
    Q_PROPERTY(QString accessibleValue READ accessibleValue)

public:
    QString label;
    QString time; ///< of a pair, such as "0.42s/pair"; empty if nothing was measured
    QString pairs;
    QString note;         ///< what failed, else empty
    double fraction = 0;  ///< of the longest time of a pair
    bool isNamed = false; ///< in the conclusion

    [[nodiscard]] QString accessibleValue() const;

    friend bool operator==(const BenchmarkRowContent&, const BenchmarkRowContent&) = default;
};

struct BenchmarkContent {
    Q_GADGET
    QML_VALUE_TYPE(benchmarkContent)

    Q_PROPERTY(QVariantList rows READ rowList)
    Q_PROPERTY(QString conclusion MEMBER conclusion)
    Q_PROPERTY(QString savedNote MEMBER savedNote)

public:
    QList<BenchmarkRowContent> rows; ///< none without a benchmark
    QString conclusion;              ///< empty if the results allow none
    QString savedNote;               ///< empty if there is no report

    [[nodiscard]] QVariantList rowList() const;

    friend bool operator==(const BenchmarkContent&, const BenchmarkContent&) = default;
};

[[nodiscard]] JobContent jobContent(const std::optional<std::string>& progress, const std::string& elapsed,
                                    const std::optional<std::string>& error);
[[nodiscard]] DiagnosticsContent diagnosticsContent(FDAStatus access,
                                                    const std::optional<DiagnosticsDump>& dump);
[[nodiscard]] BenchmarkContent benchmarkContent(std::span<const BenchmarkResult> results, bool isSaved);

} // namespace tallyglass
