// The diff cache of the whole program: opened once, when it is first needed, and shared by all that compare.
//
// Thread-safe, apart from construction. Opening blocks, and so do the operations of what is open. Jobs hold
// the session by a shared pointer, so that it outlives them.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/DiffEngine.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace tallyglass {

/// A comparison with its first rows, in the order of their paths. A value.
struct LoadedComparison {
    static constexpr std::int64_t rowLimit = 20'000;

    Comparison comparison;
    std::vector<ChangeRecord> rows;

    friend bool operator==(const LoadedComparison&, const LoadedComparison&) = default;
};

class CacheSession {
public:
    static constexpr std::size_t batchSize = 500; ///< rows per transaction

    /// The open cache.
    class Cache {
    public:
        Cache(const TMUtilRunner& runner, const std::filesystem::path& url)
            : m_store(url), m_engine(runner, m_store, batchSize) {}

        [[nodiscard]] BackupStore& store() { return m_store; }
        [[nodiscard]] const DiffEngine& engine() const { return m_engine; }

        /// Adds the first rows to a comparison of this cache. Throws as BackupStore::changes does.
        [[nodiscard]] LoadedComparison load(Comparison comparison, const std::stop_token& stop);

    private:
        BackupStore m_store;
        DiffEngine m_engine;
    };

    /// A session over the cache at `url`, or else at TallyglassDatabase::defaultURL() as it is when the cache
    /// is opened.
    explicit CacheSession(TMUtilRunner runner, std::optional<std::filesystem::path> url = std::nullopt);

    /// The cache, which the first call opens and which stays open as long as the session. Throws as
    /// BackupStore does, and then the next call tries again; throws Cancelled if stopped before it begins.
    Cache& open(const std::stop_token& stop = {});

    /// Whether open() will return at once.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

private:
    const TMUtilRunner m_runner;
    const std::optional<std::filesystem::path> m_url;
    std::mutex m_mutex;
    std::unique_ptr<Cache> m_cache; ///< guarded by the mutex
    std::atomic<bool> m_isOpen = false;
};

} // namespace tallyglass
