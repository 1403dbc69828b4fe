// What the backup engine is doing, as reported by "tmutil status". A value; any thread.
//
// Invalid values make their field absent; a text without a dictionary has no status.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

class PropertyListValue;

struct BackupStatus {
    bool isRunning = false;
    std::optional<double> percent = {};    ///< a fraction as tmutil reports it, never negative
    std::optional<std::string> phase = {}; ///< the raw word, such as "ThinningPostBackup"
    std::optional<std::int64_t> bytesCopied = {};
    std::optional<std::int64_t> totalBytes = {};
    std::optional<std::int64_t> filesCopied = {};
    std::optional<std::int64_t> totalFiles = {};
    std::optional<double> timeRemaining = {}; ///< seconds, greater than 0
    std::optional<std::int64_t> numberOfChangedItems = {};
    bool isStopping = false;

    /// No backup is running.
    static const BackupStatus idle;

    /// Parses the output of "tmutil status": the dictionary from the first "{" on. Absent if there is none or
    /// it is malformed.
    [[nodiscard]] static std::optional<BackupStatus> parse(std::string_view text);
    [[nodiscard]] static BackupStatus parse(const PropertyListValue& dictionary);

    friend bool operator==(const BackupStatus&, const BackupStatus&) = default;
};

inline constinit const BackupStatus BackupStatus::idle{};

} // namespace tallyglass
