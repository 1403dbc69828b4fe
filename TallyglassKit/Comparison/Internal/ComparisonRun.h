// One run's hold on the row of its comparison. Another run of the same comparison, in this process or
// another, takes the row when it begins. A run that finds its row taken has its changes in hand, so it takes
// the other's result over or else puts its own into the row, and both end with the right answer.
//
// Used by one thread. The store, the changes and the callback are borrowed.

#pragma once

#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>

namespace tallyglass {

class BackupStore;

class ComparisonRun {
public:
    /// Told how many of the changes are in the store.
    using OnStored = std::function<void(std::size_t)>;

    /// For a comparison that `store` has begun. A run that doesn't `acceptOlder` results is answered by none
    /// that was begun before it.
    ComparisonRun(BackupStore& store, Comparison begun, bool acceptOlder);

    /// Stores the changes, `batchSize` at a time, and ends the run. Returns its row, or that of the run whose
    /// result it takes over, or what was begun when the row has been deleted. Throws DatabaseError, or
    /// Cancelled.
    Comparison store(std::span<const ChangeRecord> changes, std::size_t batchSize, const OnStored& onStored,
                     const std::stop_token& stop);

    /// Writes into the row, if it is still the run's own, why the run ended early. A failure to do so is
    /// ignored.
    void fail(const std::string& why) noexcept;

private:
    struct Work;

    void storeRest(const Work& work);
    std::optional<Comparison> settle(const Work& work);
    std::optional<Comparison> waitForOther(const Work& work);
    [[nodiscard]] bool isAnsweredBy(const Comparison& other) const;

    BackupStore& m_store;
    const Comparison m_begun;
    const bool m_acceptOlder;
    Comparison m_row; // as this run left it
    std::size_t m_stored = 0;
    std::chrono::milliseconds m_patience{5000}; // with a run that makes no progress
};

} // namespace tallyglass
