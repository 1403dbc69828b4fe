#include "TallyglassKit/Insight/DiagnosticsDump.h"

#include <fmt/format.h>

#include <algorithm>

namespace tallyglass {

std::string DiagnosticsDump::summary() const {
    const auto count = std::ranges::count_if(steps, [](const Step& step) { return step.succeeded(); });
    return fmt::format("{} of {} probes succeeded", count, steps.size());
}

std::string DiagnosticsDump::manifest() const {
    auto text = fmt::format("Tallyglass diagnostics\n{}\n\n", summary());
    for (const Step& step : steps) {
        text += fmt::format("{}  {}\n", step.succeeded() ? "OK  " : "FAIL", step.label);
        text += fmt::format("      tmutil {}\n", fmt::join(step.arguments, " "));
        text += step.error && !step.error->empty() ? fmt::format("      {}\n", *step.error)
                                                   : fmt::format("      {} bytes\n", step.byteCount);
    }
    return text;
}

} // namespace tallyglass
