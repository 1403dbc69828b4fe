// The data models as JSON: field names are the models' own, absent is null, dates are ISO 8601 in UTC with
// milliseconds.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <nlohmann/json.hpp>

namespace tallyglass {
struct BackupHealth;
struct BackupManifestEntry;
struct BackupStatus;
struct ChangeRecord;
struct Comparison;
struct DirectoryRollup;
struct TMDestination;
struct TMSettings;
} // namespace tallyglass

namespace tallyglass::commandline {

using JSON = nlohmann::ordered_json;

[[nodiscard]] JSON toJSON(Date date);
[[nodiscard]] JSON toJSON(const BackupStatus& status);
[[nodiscard]] JSON toJSON(const TMDestination& destination); ///< with its derived values
[[nodiscard]] JSON toJSON(const TMSettings& settings);
[[nodiscard]] JSON toJSON(const BackupManifestEntry& entry); ///< with `duration`
[[nodiscard]] JSON toJSON(const BackupHealth& health);       ///< with its verdict
[[nodiscard]] JSON toJSON(const Comparison& comparison);     ///< with `netBytesFormatted`
[[nodiscard]] JSON toJSON(const ChangeRecord& change);
[[nodiscard]] JSON toJSON(const DirectoryRollup& rollup);

template <typename Value>
[[nodiscard]] JSON toJSON(const std::optional<Value>& value) {
    if (!value)
        return nullptr;
    if constexpr (std::is_arithmetic_v<Value> || std::is_convertible_v<Value, std::string_view>)
        return *value;
    else
        return toJSON(*value);
}

template <typename Values>
[[nodiscard]] JSON toJSONArray(const Values& values) {
    JSON array = JSON::array();
    for (const auto& value : values)
        array.push_back(toJSON(value));
    return array;
}

} // namespace tallyglass::commandline
