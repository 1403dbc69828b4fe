#include "Tallyglass/Screens/Diagnostics/DiagnosticsContent.h"
#include "Tallyglass/Screens/Diagnostics/Support.h"

#include <gtest/gtest.h>

#include <vector>

namespace tallyglass {
namespace {

using Step = DiagnosticsDump::Step;

TEST(DiagnosticsContent, warnsWithoutFullDiskAccess) {
    EXPECT_EQ(diagnosticsContent(FDAStatus::granted, std::nullopt), DiagnosticsContent());
    for (const auto access : {FDAStatus::denied, FDAStatus::indeterminate})
        EXPECT_EQ(diagnosticsContent(access, std::nullopt).accessNote,
                  "Without Full Disk Access most probes will record a permission error.");
}

TEST(DiagnosticsContent, tellsWhyAProbeFailed) {
    const DiagnosticsDump dump{
        .directory = "/d",
        .steps = {
            {.id = "1", .label = "Fine", .exitCode = 0},
            {.id = "2", .label = "Code", .exitCode = 70},
            {.id = "3", .label = "Late", .error = "Timed out after 5 s."},
            {.id = "4", .label = "Report", .exitCode = 0, .error = "parsed", .errorIsReport = true},
            {.id = "5", .label = "Empty", .exitCode = 0, .error = ""},
        }};

    const auto content = diagnosticsContent(FDAStatus::granted, dump);

    EXPECT_EQ(content.summary, "2 of 5 probes succeeded");
    EXPECT_EQ(content.steps[0], (DiagnosticsStepContent{"checkmark.circle.fill", Theme::Role::healthy, "Fine",
                                                        "", "Succeeded"}));
    EXPECT_EQ(content.steps[1], (DiagnosticsStepContent{"xmark.circle.fill", Theme::Role::critical, "Code",
                                                        "Exit code 70", "Failed, Exit code 70"}));
    EXPECT_EQ(content.steps[2].detail, "Timed out after 5 s.");
    EXPECT_EQ(content.steps[3].detail, "");
    EXPECT_EQ(content.steps[4].accessibleValue, "Failed, Exit code 0");
}

TEST(BenchmarkContent, showsTheTimesOfAPairAndNamesTheFastestSet) {
    const std::vector<BenchmarkResult> results{
        {.label = "tmutil default (-@gmstu)", .seconds = 8, .changeCount = 3, .pairsUsed = 2},
        {.label = "size + mtime (-st)", .seconds = 2, .changeCount = 3, .pairsUsed = 2},
        {.label = "concurrency 4", .error = "Need at least 4 backup pairs; found 2."},
    };

    const auto content = benchmarkContent(results, true);

    EXPECT_EQ(content.rows[0].time, "4.00s/pair");
    EXPECT_EQ(content.rows[0].pairs, "2 pairs");
    EXPECT_EQ(content.rows[0].fraction, 1);
    EXPECT_EQ(content.rows[1].fraction, 0.25);
    EXPECT_TRUE(content.rows[1].isNamed);
    EXPECT_EQ(content.rows[1].accessibleValue(), "1.00s/pair, 2 pairs");
    EXPECT_EQ(content.rows[2].time, "");
    EXPECT_EQ(content.rows[2].fraction, 0);
    EXPECT_EQ(content.rows[2].accessibleValue(), "0 pairs, Need at least 4 backup pairs; found 2.");
    EXPECT_TRUE(content.conclusion.contains("“size + mtime (-st)” was the fastest here: 1.00 s per pair."));
    EXPECT_EQ(content.savedNote, "Saved to the diagnostics folder as benchmark.txt.");
    EXPECT_EQ(benchmarkContent(results, false).savedNote, "");
    EXPECT_EQ(benchmarkContent(std::span(results).first(1), true).conclusion, "");
    EXPECT_EQ(benchmarkContent({}, false), BenchmarkContent());
}

TEST(Support, knowsThePlaceholderFromALink) {
    EXPECT_FALSE(Support::isSet("https://example.org/your-payment-link?a"));
    EXPECT_TRUE(Support::isSet("https://example.org/pay"));
}

} // namespace
} // namespace tallyglass
