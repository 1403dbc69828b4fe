// One comparison of two snapshots, or of a folder in them: a row of the diff cache's table "comparison". A
// value.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

struct ChangeRecord;

struct Comparison {
    /// The errorMessage of a run that was stopped.
    static constexpr std::string_view cancelled = "Cancelled";

    std::string id;       ///< see makeID
    std::string fromPath; ///< the older operand as passed to tmutil
    std::string toPath;   ///< the newer operand as passed to tmutil
    std::optional<Date> fromDate;
    std::optional<Date> toDate;
    std::int64_t depth = 0; ///< depth asked for; 0 when unlimited
    Date startedAt;
    std::optional<Date> completedAt; ///< when the run ended, in success or failure; absent while it runs
    bool isPartial = true;           ///< until a run ends without error
    std::optional<std::string> errorMessage;

    // Updated by the store with each batch; never recounted from the rows.
    std::int64_t addedCount = 0;
    std::int64_t removedCount = 0;
    std::int64_t modifiedCount = 0;
    std::int64_t bytesAdded = 0;
    std::int64_t bytesRemoved = 0;

    Comparison() = default;
    /// A comparison that is about to run. `optionsKey` is CompareOptions::cacheKey().
    Comparison(std::string fromPath, std::string toPath, std::optional<Date> fromDate,
               std::optional<Date> toDate, std::int64_t depth, const std::string& optionsKey, Date startedAt);

    /// Operands and options together identify a comparison. Identifiers are never parsed.
    [[nodiscard]] static std::string makeID(const std::string& fromPath, const std::string& toPath,
                                            const std::string& optionsKey);

    /// Adds one row to the counters. Byte counts saturate.
    void count(const ChangeRecord& change);

    [[nodiscard]] std::int64_t totalChanges() const { return addedCount + removedCount + modifiedCount; }

    [[nodiscard]] std::int64_t netBytes() const;

    /// A sign and the formatted magnitude, such as "+1.2 MB"; no sign for zero.
    [[nodiscard]] std::string netBytesFormatted() const;

    friend bool operator==(const Comparison&, const Comparison&) = default;
};

} // namespace tallyglass
