// What the backup engine is doing, as "tmutil status" tells it. A value; any thread.
//
// Whatever can't be understood is absent: one field for one bad value, and the whole status for a text that
// holds no dictionary.

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

    /// Nothing runs and nothing is known.
    static const BackupStatus idle;

    /// Reads the whole output of "tmutil status": the dictionary from the first "{" on. Absent if there is
    /// none or it is malformed.
    [[nodiscard]] static std::optional<BackupStatus> parse(std::string_view text);
    [[nodiscard]] static BackupStatus parse(const PropertyListValue& dictionary);

    friend bool operator==(const BackupStatus&, const BackupStatus&) = default;
};

inline constinit const BackupStatus BackupStatus::idle{};

} // namespace tallyglass
