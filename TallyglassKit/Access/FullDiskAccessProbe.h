// Finds out whether the system lets this program read backups, by opening a file that needs the same
// permission, without reading it. Static operations only; any thread.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <filesystem>
#include <string_view>

namespace tallyglass {

enum class FDAStatus {
    granted,
    denied,
    indeterminate, ///< unknown, such as on a system without that file
};

[[nodiscard]] std::string_view rawValue(FDAStatus status);
template <>
[[nodiscard]] std::optional<FDAStatus> fromRawValue<FDAStatus>(std::string_view raw);

struct FullDiskAccessProbe {
    /// The system's permission database.
    static constexpr std::string_view canaryPath = "/Library/Application Support/com.apple.TCC/TCC.db";
    /// The settings pane in which the user grants the permission.
    static constexpr std::string_view settingsURL =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";

    [[nodiscard]] static FDAStatus probe(const std::filesystem::path& path);
    /// Probes the canary file of a system.
    [[nodiscard]] static FDAStatus probe(const SystemPaths& paths);

    /// The status for the result of opening an existing file: 0 or an error number.
    [[nodiscard]] static FDAStatus statusOfOpening(int error);
};

} // namespace tallyglass
