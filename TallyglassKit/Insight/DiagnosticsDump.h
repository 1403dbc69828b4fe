// The outcome of a diagnostics capture: the folder with the raw outputs of tmutil, and what each probe was.
// Values; any thread.

#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

struct DiagnosticsDump {
    /// One probe. Identified by `id`.
    struct Step {
        std::string id; ///< a UUID, different in every step
        std::string label;
        std::vector<std::string> arguments = {};   ///< of tmutil; those of the manifest are its path
        std::optional<std::int32_t> exitCode = {}; ///< absent if the probe didn't run to its end
        std::int64_t byteCount = 0;                ///< of standard output, or of the manifest
        std::optional<std::string> error = {};     ///< why the probe couldn't complete
        /// `error` isn't a failure but the report of the manifest, which was read and parsed.
        bool errorIsReport = false;

        [[nodiscard]] bool succeeded() const { return (!error || errorIsReport) && exitCode == 0; }

        friend bool operator==(const Step&, const Step&) = default;
    };

    std::filesystem::path directory;
    std::vector<Step> steps; ///< in the order in which they ran

    /// Such as "7 of 8 probes succeeded".
    [[nodiscard]] std::string summary() const;

    /// The text of "manifest.txt": the summary, and the result of every step.
    [[nodiscard]] std::string manifest() const;

    friend bool operator==(const DiagnosticsDump&, const DiagnosticsDump&) = default;
};

} // namespace tallyglass
