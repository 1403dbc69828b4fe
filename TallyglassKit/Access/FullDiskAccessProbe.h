// Finds out whether the system lets this program look inside backups, by opening a file that needs the same
// permission. No byte of it is read. Static operations only; any thread.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <filesystem>
#include <string_view>

namespace tallyglass {

enum class FDAStatus {
    granted,
    denied,
    indeterminate, ///< whatever is in doubt, such as a system without that file
};

[[nodiscard]] std::string_view rawValue(FDAStatus status);
template <>
[[nodiscard]] std::optional<FDAStatus> fromRawValue<FDAStatus>(std::string_view raw);

struct FullDiskAccessProbe {
    /// The system's own permission database.
    static constexpr std::string_view canaryPath = "/Library/Application Support/com.apple.TCC/TCC.db";
    /// Opens the pane in which the user grants the permission.
    static constexpr std::string_view settingsURL =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";

    [[nodiscard]] static FDAStatus probe(const std::filesystem::path& path);
    /// Probes the canary of a system.
    [[nodiscard]] static FDAStatus probe(const SystemPaths& paths);

    /// What the result of opening an existing file says: 0, or the number of the error.
    [[nodiscard]] static FDAStatus statusOfOpening(int error);
};

} // namespace tallyglass
