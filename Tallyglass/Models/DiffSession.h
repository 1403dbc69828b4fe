// The diff cache and the engine that fills it, opened together and kept together, so that a job may hold on
// to both. Thread-safe.

#pragma once

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/DiffEngine.h"

#include <filesystem>
#include <memory>

namespace tallyglass {

class DiffSession {
public:
    static constexpr std::size_t batchSize = 500; ///< rows a transaction

    /// Opens the cache at `url`, most often TallyglassDatabase::defaultURL(). Blocks; throws as BackupStore
    /// does.
    DiffSession(const TMUtilRunner& runner, const std::filesystem::path& url)
        : m_store(url), m_engine(runner, m_store, batchSize) {}

    [[nodiscard]] BackupStore& store() { return m_store; }
    [[nodiscard]] const DiffEngine& engine() const { return m_engine; }

private:
    BackupStore m_store;
    DiffEngine m_engine;
};

} // namespace tallyglass
