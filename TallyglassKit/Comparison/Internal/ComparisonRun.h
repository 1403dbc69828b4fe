// A run's ownership of the row of its comparison. Another run of the same comparison, in this process or
// another, takes the row when it begins. A run that has lost its row still has its changes in memory: it
// returns the other's result or stores its own, and both runs end with a correct result.
//
// One thread. Borrows the store, the changes and the callback.

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
    /// Called with the number of changes stored so far.
    using OnStored = std::function<void(std::size_t)>;

    /// For a comparison that `store` has begun. Unless it may `acceptOlder` results, the run never returns
    /// one of a run that began before it.
    ComparisonRun(BackupStore& store, Comparison begun, bool acceptOlder);

    /// Stores the changes in batches of `batchSize` and ends the run. Returns its row, or the row of the run
    /// whose result it uses, or the row as begun if it has been deleted. Throws DatabaseError, or Cancelled.
    Comparison store(std::span<const ChangeRecord> changes, std::size_t batchSize, const OnStored& onStored,
                     const std::stop_token& stop);

    /// Records in the row, if it is still the run's, why the run ended early. Ignores failures.
    void fail(const std::string& why) noexcept;

private:
    struct Work;

    void storeRest(const Work& work);
    std::optional<Comparison> settle(const Work& work);
    std::optional<Comparison> waitForOther(const Work& work);
    [[nodiscard]] bool accepts(const Comparison& other) const;

    BackupStore& m_store;
    const Comparison m_begun;
    const bool m_acceptOlder;
    Comparison m_row; // as of this run's last write
    std::size_t m_stored = 0;
    std::chrono::milliseconds m_patience{5000}; // the wait for a run without progress
};

} // namespace tallyglass
